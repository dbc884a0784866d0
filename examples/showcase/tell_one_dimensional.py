"""The story of the one-dimensional model, step by step."""

from pathlib import Path

from sembra.external.dsettlement import Model1D
from sembra.local.pictures import LoadStep, save, settlement_per_load, soil_column, stresses
from sembra.local.results import ResultFile

from examples import one_dimensional as story
from examples.showcase.calculation import calculate
from examples.showcase.materials import tell_materials
from examples.showcase.settlement_table import settlement_table
from examples.showcase.settlements import Settlements
from examples.showcase.terminal import Terminal

NAME = "one_dimensional"
DATUM = "NAP"

LOADS = [LoadStep(load.name, load.time, load.pressure) for load in story.LOADS]
STEPS = sorted((load for load in LOADS if load.time >= 0), key=lambda load: load.time)


def tell(terminal: Terminal, folder: Path) -> None:
    """Tell the story, and write its files and pictures to a folder that is there."""
    terminal.title("One dimension: an old polder road is raised with sand")
    model = _build(terminal)
    sld_file = calculate(terminal, lambda: story.generate_input_file(model), folder, NAME)
    with terminal.step("Read the settlements out of the result file"):
        results = ResultFile(sld_file)
        settlements = Settlements.from_vertical(results.vertical_results[1], len(STEPS))
        residual = results.residual_times[1]
        terminal.table(settlement_table(settlements, STEPS, residual))
        rest = dict(zip(residual["Time"], residual["Residual settlement"], strict=True))
        terminal.line(f"Final settlement: {settlements.final:.3f} m")
        terminal.line(
            f"Residual settlement after the opening on day {story.OPENING}: "
            f"{rest[story.OPENING]:.3f} m"
        )
    with terminal.step("Draw the pictures"):
        column = soil_column(model, title="Soil column under the road", datum=DATUM)
        diagram = settlement_per_load(
            results,
            steps=STEPS,
            marked_times=story.CALCULATION_TIMES,
            title="Settlement of the road",
        )
        along_depth = stresses(results, title="Stresses under the road")
        for what, axes, name in (
            ("Soil column", column, "column"),
            ("Settlement against time", diagram, "settlement"),
            ("Stresses along depth", along_depth, "stresses"),
        ):
            terminal.line(f"{what}: {save(axes, folder / f'{NAME}_{name}.png')}")


def _build(terminal: Terminal) -> Model1D:
    with terminal.step("Make a one-dimensional model"):
        model = story.create_model()
        terminal.line("NEN-Koppejan with Terzaghi consolidation, up to day 10000")
    with terminal.step("Create the materials"):
        story.create_materials(model)
        tell_materials(terminal, model)
    with terminal.step("Stack the layers"):
        story.create_ground(model)
        bottoms = [*(top for top, _ in model.layers[1:]), model.bottom_level]
        for (top, soil), bottom in zip(model.layers, bottoms, strict=True):
            terminal.line(f"{soil:<15} from {top:6.2f} to {bottom:6.2f} m")
        terminal.line(f"phreatic level at {model.phreatic_level:.2f} m")
    with terminal.step("Place the loads and say when settlements are wanted"):
        story.create_loads(model)
        for load in LOADS:
            when = "initial load" if load.time < 0 else f"day {load.time:g}"
            terminal.line(f"{load.name:<19} {load.pressure:4.1f} kPa, {when}")
        terminal.line(f"settlements on day {', '.join(map(str, story.CALCULATION_TIMES))}")
    return model
