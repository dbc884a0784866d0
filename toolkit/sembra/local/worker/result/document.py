"""The whole `.sld` file: heading, echo of the input, results."""

from collections.abc import Iterator, Sequence

from sembra.local.sli.sections import split_lines
from sembra.local.worker.column_result import ColumnResult
from sembra.local.worker.project import Project
from sembra.local.worker.result.dissipation_block import dissipation_block
from sembra.local.worker.result.format import fixed
from sembra.local.worker.result.residual import residual_block
from sembra.local.worker.result.vertical import vertical_block

_TITLE = "Dump file for D-Settlement : Settlement of soil."
_CREATOR = "CREATED BY : Sembra local worker"
_END_OF_INPUT = "[END OF INPUT DATA]"


def write_results(
    text: str, project: Project, results: Sequence[ColumnResult], remarks: Sequence[str] = ()
) -> str:
    """Return the text of the `.sld` file, with the line ends of the input file.

    Args:
        text: The `.sli` file, which the result repeats in front of the results.
        project: What was read from it.
        results: The results of its columns, in the order of the verticals.
        remarks: What the user should know about the calculation, as whole sentences.
    """
    line_end = "\r\n" if "\r\n" in text else "\n"
    lines = [*_echo(split_lines(text)), "", *_results(project, results, remarks)]
    # Tables hold the line feeds between their rows already.
    return ("\n".join(lines) + "\n").replace("\n", line_end)


def _echo(lines: Sequence[str]) -> Iterator[str]:
    """Return the input file up to the end of its data, with the heading of a result file."""
    yield _TITLE
    in_heading = True
    for line in lines[1:]:
        in_heading = in_heading and line.strip() != "[INPUT DATA]"
        if in_heading and line.startswith("FILENAME"):
            name, dot, extension = line.rstrip().rpartition(".")
            yield f"{name}.sld" if dot and extension.lower() == "sli" else line
        elif in_heading and line.startswith("CREATED BY"):
            yield _CREATOR
        else:
            yield line
        if line.strip() == _END_OF_INPUT:
            return


def _amounts_block(project: Project, results: Sequence[ColumnResult]) -> Iterator[str]:
    """Return the cross-sections of the loads, in m².

    Where loads submerge by repeated calculation, and not from time to time as with Isotache and
    NEN-Bjerrum by Darcy, the weight that they lose is a load of its own to D-Settlement, without a
    cross-section.
    """
    areas = [*project.load_areas]
    if results[0].superelevation is not None:
        areas.append(results[0].superelevation)
    if project.options.submerging and not project.sinks_by_steps:
        areas.append(0.0)
    if areas:
        yield from ("[Amounts of Loads]", f"{len(areas):7d}     number of loads")
        yield from (fixed(area) for area in areas)
        yield "[End of Amounts of Loads]"


def _results(
    project: Project, results: Sequence[ColumnResult], remarks: Sequence[str]
) -> Iterator[str]:
    yield "[Results]"
    yield from ("[CALCULATION SETTINGS]", "IsSecondarySwellingUsed=0")
    yield "[END OF CALCULATION SETTINGS]"
    yield from ("[Verticals Count]", f"{len(results)}", "[End of Verticals Count]")
    for number, result in enumerate(results, 1):
        yield from vertical_block(number, result)
    yield from residual_block(results, project.residual_times)
    yield from _amounts_block(project, results)
    for dissipation in filter(None, (result.dissipation for result in results)):
        yield from dissipation_block(dissipation)
        # D-Settlement writes the same block once more behind the dissipation. Without rows two such
        # blocks can't be read: the first would end where the second does.
        if project.residual_times:
            yield from residual_block(results, project.residual_times)
    if remarks:
        yield from ("[Warnings]", f"{len(remarks):7d}     number of warnings")
        yield from (*remarks, "[End of Warnings]")
    yield "[End of Results]"
