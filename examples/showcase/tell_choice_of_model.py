"""The story of the embankment by other models: a table, and the picture of what is left."""

# matplotlib says nothing of the types of its keyword arguments.
# pyright: reportUnknownMemberType=false

from pathlib import Path

from matplotlib.axes import Axes
from rich.table import Table
from sembra.local.pictures.settlement import FIRST_TIME
from sembra.local.pictures.style import (
    LOAD,
    curve_style,
    draw_grid,
    look,
    new_figure,
    prepare_time_axis,
    save,
    write_legend,
)

from examples import choice_of_model as story
from examples.showcase.terminal import Terminal
from examples.two_dimensional import OPENING

NAME = "choice_of_model"

ROOM_FOR_LABEL = 30
"""Between the title and a diagram, for the name of the line of the opening, in points."""


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its picture to a folder that is there."""
    terminal.title("The choice of the model: what is left to settle after the opening?")
    with terminal.step("Calculate by two soil models and two kinds of consolidation"):
        outcomes = {choice.name: story.calculate(choice) for choice in story.CHOICES}
        terminal.table(_table(outcomes))
    with terminal.step("Draw the picture"):
        path = folder / f"{NAME}_residual.png"
        _draw(path, outcomes)
        terminal.line(f"Residual settlement: {path}")


def _table(outcomes: dict[str, story.Outcome]) -> Table:
    table = Table(title="Settlement of the surface at the axis [m]", title_justify="left")
    table.add_column("model")
    for title in (f"day {OPENING}", "in the end", f"after day {OPENING}"):
        table.add_column(title, justify="right")
    for name, outcome in outcomes.items():
        table.add_row(
            name,
            f"{story.at_opening(outcome, outcome.settlements):.3f}",
            f"{outcome.settlements[-1]:.3f}",
            f"{story.at_opening(outcome, outcome.residual):.3f}",
        )
    return table


def _draw(path: Path, outcomes: dict[str, story.Outcome]) -> None:
    """Draw settlement against time, and beside it what is left of it from the opening on."""
    with look():
        settlement, residual = new_figure(11.0, 5.5).subplots(1, 2)
        for index, (name, outcome) in enumerate(outcomes.items()):
            color, line = curve_style(index)
            later = [index for index, time in enumerate(outcome.times) if time >= FIRST_TIME]
            opened = [index for index in later if outcome.times[index] >= OPENING]
            for axes, shown, values in (
                (settlement, later, outcome.settlements),
                (residual, opened, outcome.residual),
            ):
                axes.plot(
                    [outcome.times[i] for i in shown], [values[i] for i in shown],
                    color=color, linestyle=line, label=name,
                )  # fmt: skip
        end = max(outcome.times[-1] for outcome in outcomes.values())
        _finish(settlement, "Settlement at the axis", "Settlement [m]", FIRST_TIME, end)
        settlement.set_ylim(settlement.get_ylim()[1], 0.0)
        settlement.axvline(OPENING, color=LOAD, linewidth=0.9, linestyle=(0, (4, 3)), zorder=2)
        settlement.annotate(
            f"opening\nday {OPENING}", (OPENING, 1.0), xycoords=settlement.get_xaxis_transform(),
            xytext=(0, 3), textcoords="offset points", color=LOAD, ha="center", va="bottom",
        )  # fmt: skip
        title = f"Still to come after the opening on day {OPENING}"
        _finish(residual, title, "Residual settlement [m]", OPENING, end)
        residual.set_ylim(bottom=0.0)
        for axes in (settlement, residual):
            write_legend(axes, "Model")
        save(settlement, path)


def _finish(axes: Axes, title: str, label: str, first: float, end: float) -> None:
    """Give a diagram its title and axes."""
    axes.set_title(title, loc="left", pad=ROOM_FOR_LABEL)
    prepare_time_axis(axes, first, end)
    axes.set_ylabel(label)
    draw_grid(axes)
