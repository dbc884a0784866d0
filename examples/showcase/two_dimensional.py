"""The story of the two-dimensional model, step by step."""

from pathlib import Path
from typing import TYPE_CHECKING

from sembra.external.dsettlement import OutputFileParser

from examples import two_dimensional as story

from .calculation import calculate
from .cross_section import CrossSection, DrainBand, Embankment, Layer, Line
from .section_legend import told_times
from .section_picture import draw_section
from .settlement_picture import Curve, LineStyle, draw_settlements
from .settlement_table import CAPTION, settlement_table
from .settlements import LoadStep, Settlements
from .terminal import Terminal

if TYPE_CHECKING:
    from sembra.external.dsettlement import _CurveList

NAME = "two_dimensional"
DATUM = "NAP"

AXIS = next(x for x, name in story.VERTICALS.items() if name == "axis")

DASH_DOT_DOT: LineStyle = (0, (8, 2, 1, 2, 1, 2))
CURVE_STYLES: tuple[tuple[str, LineStyle], ...] = (
    ("#7a7a7a", ":"), ("#2f8f5b", "-."), ("#3f7fbf", "--"), ("#12345b", "-"),
    ("#9a6a00", DASH_DOT_DOT),
)  # fmt: skip
"""Colours and lines of the verticals, from left to right."""


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its files and pictures to a folder that is there."""
    terminal.title("Two dimensions: a road embankment on soft ground, with strip drains")
    project = _build(terminal)
    section = _cross_section(project)
    steps = _steps_at_axis(section)
    model = project.model
    sld_file = calculate(terminal, lambda: story.generate_input_file(model), folder, NAME)
    with terminal.step("Read the settlements of each vertical out of the result file"):
        parser = OutputFileParser(sld_file)
        settlements = {
            number: Settlements.from_vertical(vertical, len(steps))
            for number, vertical in parser.vertical_results.items()
        }
        _tell_settlements(terminal, settlements, steps, parser.residual_times)
    with terminal.step("Draw the pictures"):
        picture, diagram = folder / f"{NAME}_section.png", folder / f"{NAME}_settlement.png"
        draw_section(picture, section, "Cross-section of the embankment")
        terminal.line(f"Cross-section: {picture}")
        draw_settlements(
            diagram,
            _curves(settlements),
            steps,
            "Settlement of the surface along the cross-section",
            "Vertical",
            "Load at axis",
            name_steps=True,
        )
        terminal.line(f"Settlement against time: {diagram}")


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
        for name, material in model.materials.items():
            terminal.line(
                f"{name:<15} {material.gam_dry:4.1f} / {material.gam_wet:4.1f} kN/m³ "
                "above / below the phreatic level"
            )
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
        for load in _cross_section(project).loads:
            top = max(level for _, level in load.outline)
            terminal.line(f"{load.name:<19} up to {top:5.2f} m, {told_times(load)}")
    return project


def _cross_section(project: story.Project) -> CrossSection:
    layers = []
    for layer in project.ground.layers:
        soil = project.model.materials[layer.material]
        layers.append(
            Layer(
                _line(layer.boundary_top), _line(layer.boundary_bottom), layer.material,
                soil.color, (soil.gam_dry, soil.gam_wet),
            )
        )  # fmt: skip
    loads = [
        Embankment(
            stage.name, load.points, stage.time, stage.removal, story.UNIT_WEIGHT_OF_SAND
        )
        for stage, load in zip(story.STAGES, project.loads, strict=True)
    ]  # fmt: skip
    return CrossSection(
        layers=layers,
        phreatic_line=_line(project.ground.phreatic_line),
        pl_lines={"Pl-line 2, head in the sand": _line(project.ground.head_in_sand)},
        verticals=[vertical.x for vertical in project.verticals],
        loads=loads,
        drains=DrainBand(
            f"Strip drains, {story.DRAIN_DISTANCE:g} m triangular",
            story.DRAIN_LEFT, story.DRAIN_RIGHT, story.DRAIN_BOTTOM,
        ),
        datum=DATUM,
    )  # fmt: skip


def _line(chain: "_CurveList") -> Line:
    return [(point.x, point.y) for point in chain.points]


def _steps_at_axis(section: CrossSection) -> list[LoadStep]:
    """What comes and goes, in the order of time; all of it lies above the phreatic line."""
    steps = []
    for index, load in enumerate(section.loads):
        pressure = load.unit_weights[0] * float(section.thickness(index, AXIS))
        steps.append(LoadStep(load.name, load.time, pressure))
        if load.removal is not None:
            steps.append(LoadStep(load.name, load.removal, -pressure))
    return sorted(steps, key=lambda step: step.time)


def _tell_settlements(
    terminal: Terminal,
    settlements: dict[int, Settlements],
    steps: list[LoadStep],
    residual_times: dict[int, dict[str, list[float]]],
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


def _curves(settlements: dict[int, Settlements]) -> list[Curve]:
    return [
        Curve(
            f"{number}: {name}, x = {x:g} m", settlements[number].times,
            settlements[number].total, color, line_style,
            line_width=2.2 if x == AXIS else 1.4,
            marked_times=story.CALCULATION_TIMES,
            name=f"{number}",
        )
        for number, ((x, name), (color, line_style)) in enumerate(
            zip(story.VERTICALS.items(), CURVE_STYLES, strict=True), 1
        )
    ]  # fmt: skip
