"""What is compared of a result file, be it published or the worker's."""

import re
from collections.abc import Mapping, Sequence
from dataclasses import dataclass
from io import StringIO
from itertools import zip_longest
from typing import Any, Final

import numpy as np
from numpy.typing import NDArray
from sembra.local.results import LayerDissipation, ResultFile

Floats = NDArray[np.float64]

_KINDS: Final = re.compile(r"Layer seperation count *\n(.*?)\[End of Koppejan", re.DOTALL)


@dataclass(frozen=True)
class Vertical:
    """Results of one vertical: depths in metres, times in days, stresses in kPa.

    Shapes: `times` (times,), `depths` (nodes,), `settlements` and `stresses` (times, nodes),
    `loads` (times, load steps), the other stresses (nodes,). `stresses` are effective: by Terzaghi
    those after consolidation under the loads of the time, by Darcy those of the time. A block that
    the file doesn't have is None; `residual` then has no rows. Its columns are time, settlement and
    residual settlement. `kinds` are the settlements of each layer by kind, shape (layers, 6), for
    NEN-Koppejan. A file has the dissipation of one vertical and doesn't tell which: `dissipation`,
    times in the first column and the degree of each layer from the lowest in the others, stands
    with its first.
    """

    x: float
    times: Floats
    depths: Floats
    settlements: Floats
    stresses: Floats
    loads: Floats | None
    initial_stress: Floats | None
    final_stress: Floats | None
    preconsolidation: Floats | None
    residual: Floats
    kinds: Floats | None
    dissipation: Floats | None

    @property
    def curve(self) -> Floats:
        """Settlement of the surface, shape (times,)."""
        curve: Floats = self.settlements[:, 0]
        return curve

    @property
    def final(self) -> float:
        """Settlement of the surface in the end."""
        return float(self.settlements[-1, 0])


def read_verticals(text: str) -> list[Vertical]:
    """Return the verticals of a result file, in its order.

    Raises:
        ValueError: A vertical has no settlements, or a row is none of numbers.
    """
    results = ResultFile(StringIO(text, newline=""))
    residual = results.residual_times
    kinds = [_numbers(rows)[:, 1:] for rows in _KINDS.findall(text.replace("\r\n", "\n"))]
    dissipation = _dissipation(results.dissipation)
    return [
        _vertical(vertical, residual.get(number, {}), kind, dissipation if number == 1 else None)
        for (number, vertical), kind in zip_longest(
            results.vertical_results.items(), kinds[: len(results.vertical_results)]
        )
    ]


def _vertical(
    results: Mapping[str, Any],
    residual: Mapping[str, list[float]],
    kinds: Floats | None,
    dissipation: Floats | None,
) -> Vertical:
    history = results["vertical_data"]
    if not history:
        raise ValueError("A vertical has no settlements.")
    first, *_, last = history.values() if len(history) > 1 else [*history.values()] * 2
    initial, final = _effective_stresses(results["stresses"], first, last)
    per_load = results["time_settlement_per_load"]
    return Vertical(
        x=float(results["coordinates"]["x"]),
        times=np.array(list(history)),
        depths=np.array(results["depths"]),
        settlements=np.array([columns["Settlement"] for columns in history.values()]),
        stresses=np.array([_stresses_at(columns) for columns in history.values()]),
        loads=_loads(per_load) if per_load else None,
        initial_stress=initial,
        final_stress=final,
        preconsolidation=_array(results["stresses"].get("Final pre consolidation stress")),
        residual=_columns(residual, ("Time", "Settlement", "Residual settlement")),
        kinds=kinds,
        dissipation=dissipation,
    )


def _dissipation(layers: Mapping[int, LayerDissipation]) -> Floats | None:
    if not layers:
        return None
    times = layers[min(layers)]["time"]
    return np.column_stack([times, *(layers[number]["degree"] for number in sorted(layers))])


def _numbers(rows: str) -> Floats:
    return np.array([row.split() for row in rows.splitlines()], dtype=np.float64)


def _stresses_at(columns: Mapping[str, list[float]]) -> list[float]:
    darcy, terzaghi = "Effective stress vertical", "Loading"
    return columns[darcy if darcy in columns else terzaghi]


def _effective_stresses(
    stresses: Mapping[str, list[float]],
    first: Mapping[str, list[float]],
    last: Mapping[str, list[float]],
) -> tuple[Floats | None, Floats | None]:
    """Return the effective stress before and after: of its block, or of the history (Darcy)."""
    if stresses:
        return tuple(
            np.array(stresses[f"{when} total stress"]) - np.array(stresses[f"{when} water stress"])
            for when in ("Initial", "Final")
        )
    return _array(first.get("Initial Stress")), _array(last.get("Effective stress vertical"))


def _loads(per_load: Mapping[str, Any]) -> Floats:
    names = [f"load_{number}" for number in range(1, per_load["load_step_count"] + 1)]
    return _columns(per_load, names)


def _columns(table: Mapping[str, list[float]], names: Sequence[str]) -> Floats:
    if not table:
        return np.empty((0, len(names)))
    return np.column_stack([np.array(table[name]) for name in names])


def _array(values: list[float] | None) -> Floats | None:
    return None if values is None else np.array(values)
