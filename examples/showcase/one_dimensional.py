"""The story of the one-dimensional model, step by step."""

from pathlib import Path

from sembra.external.dsettlement import Model1D, OutputFileParser

from examples import one_dimensional as story

from .calculation import calculate
from .column_picture import Layer, SoilColumn, draw_column
from .settlement_picture import Curve, draw_settlements
from .settlement_table import settlement_table
from .settlements import LoadStep, Settlements
from .terminal import Terminal

NAME = "one_dimensional"
DATUM = "NAP"

LOADS = [LoadStep(load.name, load.time, load.pressure) for load in story.LOADS]
STEPS = sorted((load for load in LOADS if load.time >= 0), key=lambda load: load.time)

CURVE_STYLES = (("#7a7a7a", ":"), ("#3f7fbf", "--"), ("#2f8f5b", "-."))
"""Colours and lines of the settlement by some of the loads."""

TOTAL_COLOR = "#12345b"


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its files and pictures to a folder that is there."""
    terminal.title("One dimension: an old polder road is raised with sand")
    model = _build(terminal)
    sld_file = calculate(terminal, lambda: story.generate_input_file(model), folder, NAME)
    with terminal.step("Read the settlements out of the result file"):
        parser = OutputFileParser(sld_file)
        settlements = Settlements.from_vertical(parser.vertical_results[1], len(STEPS))
        residual = parser.residual_times[1]
        terminal.table(settlement_table(settlements, STEPS, residual))
        rest = dict(zip(residual["Time"], residual["Residual settlement"], strict=True))
        terminal.line(f"Final settlement: {settlements.final:.3f} m")
        terminal.line(
            f"Residual settlement after the opening on day {story.OPENING}: "
            f"{rest[story.OPENING]:.3f} m"
        )
    with terminal.step("Draw the pictures"):
        column, diagram = folder / f"{NAME}_column.png", folder / f"{NAME}_settlement.png"
        draw_column(column, _soil_column(model), "Soil column under the road")
        terminal.line(f"Soil column: {column}")
        draw_settlements(
            diagram,
            _curves(settlements),
            STEPS,
            "Settlement of the road",
            "Settlement by the loads",
        )
        terminal.line(f"Settlement against time: {diagram}")


def _build(terminal: Terminal) -> Model1D:
    with terminal.step("Make a one-dimensional model"):
        model = story.create_model()
        terminal.line("NEN-Koppejan with Terzaghi consolidation, up to day 10000")
    with terminal.step("Create the materials"):
        story.create_materials(model)
        for name, material in model.materials.items():
            terminal.line(
                f"{name:<15} {material.gam_dry:4.1f} / {material.gam_wet:4.1f} kN/m³ "
                "above / below the phreatic level"
            )
    with terminal.step("Stack the layers"):
        story.create_ground(model)
        for layer in _layers(model):
            terminal.line(f"{layer.material:<15} from {layer.top:6.2f} to {layer.bottom:6.2f} m")
        terminal.line(f"phreatic level at {model.phreatic_level:.2f} m")
    with terminal.step("Place the loads and say when settlements are wanted"):
        story.create_loads(model)
        for load in LOADS:
            when = "initial load" if load.time < 0 else f"day {load.time:g}"
            terminal.line(f"{load.name:<19} {load.pressure:4.1f} kPa, {when}")
        terminal.line(f"settlements on day {', '.join(map(str, story.CALCULATION_TIMES))}")
    return model


def _layers(model: Model1D) -> list[Layer]:
    tops = [top for top, _ in model.layers]
    layers = []
    for (top, name), bottom in zip(model.layers, [*tops[1:], model.bottom_level], strict=True):
        soil = model.materials[name]
        layers.append(Layer(top, bottom, name, soil.color, (soil.gam_dry, soil.gam_wet)))
    return layers


def _soil_column(model: Model1D) -> SoilColumn:
    return SoilColumn(_layers(model), model.phreatic_level, LOADS, DATUM)


def _curves(settlements: Settlements) -> list[Curve]:
    """The settlement by the first load step, the first two, and so on, the last one in bold."""
    curves = []
    for number, (step, by_load) in enumerate(zip(STEPS, settlements.by_load, strict=True), 1):
        numbers = " + ".join(str(earlier) for earlier in range(1, number + 1))
        label = f"{numbers}: {'with ' if number > 1 else ''}{step.name}, {step.pressure:.1f} kPa"
        if number < len(STEPS):
            color, line_style = CURVE_STYLES[(number - 1) % len(CURVE_STYLES)]
            curves.append(Curve(label, settlements.times, by_load, color, line_style))
        else:
            curves.append(
                Curve(
                    label, settlements.times, by_load, TOTAL_COLOR, line_width=2.2,
                    marked_times=story.CALCULATION_TIMES,
                )
            )  # fmt: skip
    return curves
