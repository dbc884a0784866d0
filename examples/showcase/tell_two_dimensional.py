"""The story of the two-dimensional model, step by step."""

from pathlib import Path
from typing import TYPE_CHECKING

import numpy as np
from sembra.local.pictures import (
    LoadStep,
    cross_section,
    save,
    settlement_along_depth,
    settlement_per_vertical,
)
from sembra.local.results import ResultFile

from examples import two_dimensional as story
from examples.showcase.calculation import calculate
from examples.showcase.materials import tell_materials
from examples.showcase.settlement_table import CAPTION, settlement_table
from examples.showcase.settlements import Settlements
from examples.showcase.terminal import Terminal

if TYPE_CHECKING:
    from sembra.external.dsettlement import ResidualSettlements

NAME = "two_dimensional"
DATUM = "NAP"

AXIS = next(x for x, name in story.VERTICALS.items() if name == "axis")


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its files and pictures to a folder that is there."""
    terminal.title("Two dimensions: a road embankment on soft ground, with strip drains")
    project = _build(terminal)
    steps = _steps_at_axis()
    model = project.model
    sld_file = calculate(terminal, lambda: story.generate_input_file(model), folder, NAME)
    with terminal.step("Read the settlements of each vertical out of the result file"):
        results = ResultFile(sld_file)
        settlements = {
            number: Settlements.from_vertical(vertical, len(steps))
            for number, vertical in results.vertical_results.items()
        }
        _tell_settlements(terminal, settlements, steps, results.residual_times)
    with terminal.step("Draw the pictures"):
        section = cross_section(
            model,
            title="Cross-section of the embankment",
            datum=DATUM,
            pl_line_names=["head in the sand"],
        )
        diagram = settlement_per_vertical(
            results,
            names=list(story.VERTICALS.values()),
            steps=steps,
            marked_times=story.CALCULATION_TIMES,
            title="Settlement of the surface along the cross-section",
            load_label="Load at axis",
        )
        along_depth = settlement_along_depth(
            results, vertical=list(story.VERTICALS).index(AXIS) + 1, title="Settlement at the axis"
        )
        for what, axes, name in (
            ("Cross-section", section, "section"),
            ("Settlement against time", diagram, "settlement"),
            ("Settlement along depth", along_depth, "depth"),
        ):
            terminal.line(f"{what}: {save(axes, folder / f'{NAME}_{name}.png')}")


def _build(terminal: Terminal) -> story.Project:
    with terminal.step("Make a two-dimensional model with strip drains"):
        model = story.create_model()
        terminal.line(f"from x = {story.LIMITS[0]:g} to {story.LIMITS[1]:g} m")
        terminal.line("NEN-Koppejan with Terzaghi consolidation, up to day 10000")
        terminal.line(
            f"drains every {story.DRAIN_DISTANCE:g} m from x = {story.DRAIN_LEFT:g} to "
            f"{story.DRAIN_RIGHT:g} m, down to {story.DRAIN_BOTTOM:.2f} m"
        )
    with terminal.step("Create the materials"):
        story.create_materials(model)
        tell_materials(terminal, model)
    with terminal.step("Draw the pl-lines and stack the layers, from bottom to top"):
        ground = story.create_ground(model)
        for layer in reversed(ground.layers):
            levels = [point.y for point in layer.boundary_top.points]
            terminal.line(
                f"{layer.material:<15} top from {min(levels):5.2f} to {max(levels):5.2f} m"
            )
    with terminal.step("Place the verticals and say when settlements are wanted"):
        verticals = story.create_verticals(model)
        for number, vertical in enumerate(verticals, 1):
            terminal.line(f"{number}: {story.VERTICALS[vertical.x]:<11} x = {vertical.x:4.1f} m")
        terminal.line(f"settlements on day {', '.join(map(str, story.CALCULATION_TIMES))}")
    with terminal.step("Build the embankment in stages"):
        project = story.Project(model, ground, verticals, story.create_loads(model))
        for stage in story.STAGES:
            top = max(level for _, level in stage.outline)
            until = "" if stage.removal is None else f" to {stage.removal:g}"
            terminal.line(f"{stage.name:<19} up to {top:5.2f} m, day {stage.time:g}{until}")
    return project


def _steps_at_axis() -> list[LoadStep]:
    """Return what comes and goes, in the order of time; all of it lies above the phreatic line."""
    above_water, _ = story.UNIT_WEIGHT_OF_SAND
    steps: list[LoadStep] = []
    ground = _level(story.SURFACE)
    for stage in story.STAGES:
        top = _level(stage.outline)
        pressure = above_water * (top - ground)
        ground = top
        steps.append(LoadStep(stage.name, stage.time, pressure))
        if stage.removal is not None:
            steps.append(LoadStep(stage.name, stage.removal, -pressure))
    return sorted(steps, key=lambda step: step.time)


def _level(line: story.Line) -> float:
    """Return the level of a line at the axis."""
    return float(np.interp(AXIS, [x for x, _ in line], [level for _, level in line]))


def _tell_settlements(
    terminal: Terminal,
    settlements: dict[int, Settlements],
    steps: list[LoadStep],
    residual_times: "dict[int, ResidualSettlements]",
) -> None:
    """Print a table per vertical, then the final settlements and what is left at the opening."""
    for number, (x, name) in enumerate(story.VERTICALS.items(), 1):
        title = f"Vertical {number}, {name}, x = {x:g} m: settlement of the surface [m]"
        caption = CAPTION if number == len(story.VERTICALS) else None
        table = settlement_table(settlements[number], steps, residual_times[number], title, caption)
        terminal.table(table)
    for number, name in enumerate(story.VERTICALS.values(), 1):
        residual = residual_times[number]
        rest = dict(zip(residual["Time"], residual["Residual settlement"], strict=True))
        terminal.line(
            f"Final settlement at the {name}: {settlements[number].final:.3f} m, "
            f"after the opening on day {story.OPENING}: {rest[story.OPENING]:.3f} m"
        )
