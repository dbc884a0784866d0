"""How the parts of a cross-section look, in the picture and in its legend."""

from collections.abc import Sequence
from typing import Any

import numpy as np
from matplotlib.colors import to_rgb

from sembra.local.pictures.cross_section import Embankment
from sembra.local.pictures.style import INK, LOAD, WATER

PHREATIC: dict[str, Any] = {"color": WATER, "linewidth": 1.6, "linestyle": (0, (7, 3))}
DRAINS: dict[str, Any] = {
    "facecolor": "none", "edgecolor": INK, "linewidth": 0.9, "linestyle": (0, (3, 2))
}  # fmt: skip
MANY_DRAINS: dict[str, Any] = {**DRAINS, "hatch": "||"}
"""The look in a legend, and of drains that stand too close to be drawn one by one."""
DRAIN: dict[str, Any] = {"color": INK, "linewidth": 0.9}
VERTICAL: dict[str, Any] = {"color": "#7a1f6b", "linewidth": 1.1, "linestyle": (0, (8, 2, 1, 2))}

_PL_LINES = (
    ("#0a8f8f", (0, (2, 2))),
    ("#2f4fd0", (0, (6, 2, 1, 2))),
    ("#5a3fa8", (0, (4, 1, 1, 1, 1, 1))),
    ("#0f5f5f", (0, (10, 3))),
    ("#4a7fe0", (0, (1, 1))),
)
_FIRST, _LAST = "#f3ddd3", "#c98a72"
"""The colours of the first and the last load."""


def pl_line_style(index: int) -> dict[str, Any]:
    """Return how a pl-line looks, by its place among those that aren't phreatic."""
    color, dashes = _PL_LINES[index % len(_PL_LINES)]
    return {"color": color, "linewidth": 1.5, "linestyle": dashes}


def load_style(loads: Sequence[Embankment], index: int) -> dict[str, Any]:
    """Return how a load looks: the later, the darker; a temporary one is hatched."""
    part = index / max(len(loads) - 1, 1)
    first, last = np.array(to_rgb(_FIRST)), np.array(to_rgb(_LAST))
    color = tuple(first + (last - first) * part)
    style: dict[str, Any] = {"facecolor": color, "edgecolor": LOAD, "linewidth": 1.0}
    if loads[index].removal is not None:
        style |= {"hatch": "//", "linestyle": (0, (4, 2))}
    return style
