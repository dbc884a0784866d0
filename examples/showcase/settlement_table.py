"""The settlements of one vertical as a table."""

from collections.abc import Sequence

from rich import box
from rich.table import Table
from rich.text import Text
from sembra.local.pictures import LoadStep

from examples.showcase.settlements import Settlements

NOT_YET = "-"


CAPTION = (
    "Each load's column holds the settlement by it and the loads to its left; "
    "the last of them is the whole settlement."
)


def settlement_table(
    settlements: Settlements,
    steps: Sequence[LoadStep],
    residual: dict[str, list[float]],
    title: str = "Settlement of the surface [m]",
    caption: str | None = CAPTION,
) -> Table:
    """Return the settlement per load step, in all, and still to come, one row per calculation time.

    settlements: settlements of the vertical.
    steps: the load steps in the order of time.
    residual: the entry of the vertical in `OutputFileParser.residual_times`.
    title, caption: stand above and below the table.
    """
    table = Table(
        title=Text(title),
        caption=caption,
        box=box.SIMPLE_HEAD,
        title_justify="left",
        caption_justify="left",
    )
    table.add_column(Text("Time\n[days]"), justify="right")
    for number, step in enumerate(steps):
        sign = "+ " if number and step.pressure >= 0 else ""
        table.add_column(Text(f"{sign}{step.told}"), justify="right", max_width=13)
    table.add_column(Text("Part of\nfinal [%]"), justify="right")
    table.add_column(Text("Residual\n[m]"), justify="right")
    for time, part, rest in zip(
        residual["Time"],
        residual["Part of final settlement"],
        residual["Residual settlement"],
        strict=True,
    ):
        placed = [
            f"{settlement:.3f}" if time > step.time else NOT_YET
            for step, settlement in zip(steps, settlements.at(time), strict=True)
        ]
        table.add_row(f"{time:g}", *placed, f"{part:.1f}", f"{rest:.3f}")
    return table
