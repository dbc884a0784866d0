"""Whether two result files have the same blocks, headers and numbers of rows in the same order."""

import re
from itertools import zip_longest

_LEFT_OUT = (
    # What the worker adds, or leaves away with a warning.
    r"\[Warnings\]\n.*?\[End of Warnings\]\n",
    r"\[RELIABILITY CALCULATION RESULTS\]\n.*?(?=\[End of Results\])",
    r"\[ELASTICITY\]\n.*?\[END OF HORIZONTAL DISPLACEMENTS\]\n",
    # Residual settlements without rows, written twice: the worker doesn't repeat them.
    r"(?<=\[End of Dissipation in Layers\]\n)\[RESIDUAL SETTLEMENTS\]\n(?:(?!\n *\d+ +\d).)*?"
    r"\[END OF RESIDUAL SETTLEMENTS\]\n(?=\[End of Results\])",
)
_NUMBER = re.compile(r" *[-+]?\d+(?:\.\d*)? *")


def layout_difference(published: str, ours: str) -> str | None:
    """Return where the layouts of two result files part, in words; None if they don't.

    Args:
        published: Text of the published file.
        ours: Text of the worker's.
    """
    block, layouts = "[Results]", (_layout(published), _layout(ours))
    for theirs, mine in zip_longest(*layouts, fillvalue="the end"):
        if theirs != mine:
            return f"behind {block}, {mine} instead of {theirs}"
        if theirs.startswith("["):
            block = theirs
    return None


def _layout(text: str) -> list[str]:
    """Return the lines of the results, a sign in place of each number."""
    text = text.replace("\r\n", "\n")
    results = text[text.index("[Results]\n") :]
    for pattern in _LEFT_OUT:
        results = re.sub(pattern, "", results, flags=re.DOTALL)
    return [line.rstrip() for line in _NUMBER.sub("#", results).split("\n")]
