"""The story of the embankment by other models: a table, and the picture of what is left."""

from pathlib import Path

from rich.table import Table
from sembra.local.pictures.style import LOAD, curve_style, draw_grid, look, new_figure, save

from examples import choice_of_model as story
from examples.showcase.terminal import Terminal
from examples.two_dimensional import OPENING

NAME = "choice_of_model"


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
        figure = new_figure(10.0, 4.6)
        settlement, residual = figure.subplots(1, 2)
        for index, (name, outcome) in enumerate(outcomes.items()):
            color, line = curve_style(index)
            later = [index for index, time in enumerate(outcome.times) if time > 0]
            settlement.plot(
                [outcome.times[i] for i in later],
                [outcome.settlements[i] for i in later],
                color=color, linestyle=line, label=name,
            )  # fmt: skip
            opened = [index for index in later if outcome.times[index] >= OPENING]
            residual.plot(
                [outcome.times[i] for i in opened],
                [outcome.residual[i] for i in opened],
                color=color, linestyle=line, label=name,
            )  # fmt: skip
        settlement.axvline(OPENING, color=LOAD, linewidth=1.0, linestyle=":")
        settlement.annotate(
            "opening", (OPENING, 0.98), xycoords=settlement.get_xaxis_transform(),
            color=LOAD, ha="left", va="top", rotation=90,
        )  # fmt: skip
        settlement.set_title("Settlement at the axis")
        settlement.set_ylabel("settlement [m]")
        settlement.invert_yaxis()
        settlement.legend(loc="lower left")
        residual.set_title("Still to come after the opening")
        residual.set_ylabel("residual settlement [m]")
        residual.set_ylim(bottom=0.0)
        for axes in (settlement, residual):
            axes.set_xscale("log")
            axes.set_xlabel("time [days]")
            draw_grid(axes)
        save(settlement, path)
