"""The road from a model to its results, which is the same for every model."""

from collections.abc import Callable
from io import BytesIO, StringIO
from pathlib import Path

from sembra.external.dsettlement import DSettlementAnalysis

from examples.showcase.terminal import Terminal


def calculate(
    terminal: Terminal, generate_input_file: Callable[[], BytesIO], folder: Path, name: str
) -> StringIO:
    """Have the input file filled in and calculate; keep input file and result file.

    terminal: where it is told.
    generate_input_file: returns the input file.
    folder: where the files go.
    name: what they are called, apart from their extensions.

    Returns the result file.
    """
    with terminal.step("Have the input file filled in by the template service"):
        input_file = generate_input_file()
        path = folder / f"{name}.sli"
        path.write_bytes(input_file.getvalue())
        terminal.line(f"Input file: {path}")
    with terminal.step("Calculate on the worker"):
        analysis = DSettlementAnalysis(input_file)
        analysis.execute(timeout=60)
        path = folder / f"{name}.sld"
        sld_file = analysis.get_sld_file()
        path.write_text(sld_file.getvalue(), encoding="utf-8", newline="")
        terminal.line(f"Result file: {path}")
    return sld_file
