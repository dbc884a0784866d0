"""From a model of a cross-section to its settlements, held against results of D-Settlement.

A sample is built through the public interface, filled in by the service, calculated by the worker
and read by the parser. Where the document has no key for an option that matters, the option's line
is taken from the sample before the calculation.
"""

from functools import cache
from io import BytesIO, StringIO
from pathlib import Path
from typing import Any

import pytest
from sembra.external.dsettlement import DSettlementAnalysis, OutputFileParser
from sembra.local.input_file import read_model
from sembra.local.sli.entries import entries
from sembra.local.sli.whole_file import InputFile

from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.drained_sample import drained_columns
from tests.toolkit.worker.input_file import calculated

pytestmark = needs_samples

LAST_DIGIT = 1e-7
"""What a settlement [m] or a stress [kPa] is printed to."""

MATTERING = {
    "bm1-4": {"Precon. pressure within a layer"},
    "bm2-3": {"Unit Weight of Water"},
    "bm3-13b": {
        "Unit Weight of Water",
        "Stress distribution soil",
        "Load column width non-uniform loads [m]",
    },
}
"""The options that each sample has otherwise than a generated file and that move its settlements.

The others that differ concern what isn't calculated: subtime steps, the drainage of a layer without
consolidation, load columns of other loads, submerging and profile, verticals of dissipation and
fit.
"""

# A generated file has 9.81 kN/m3 for water, where bm2-3 and bm3-13b have 10.00: the stress before
# the load is higher by then, and the strain goes with the logarithm of a ratio of stresses. It
# spreads loads after Buisman, which concentrates them more than Boussinesq does for bm3-13b, and
# cuts them into columns of 1 m instead of 0.5: that tells at the toe of the load, where the first
# vertical stands. In bm1-4 the preconsolidation pressure is constant in layers of 0.1 m.
WITHOUT_OPTIONS = {
    "bm1-4": [0.004],
    "bm2-3": [0.012],
    "bm3-13b": [0.12, 0.016, 0.008, 0.012, 0.013],
}


@cache
def generated(name: str) -> str:
    """Return the file that the service fills in for the model of a sample."""
    return generated_again(FOLDER / f"{name}.sli")


def generated_again(path: Path) -> str:
    """Return the file that the service fills in for the model of a file."""
    return read_model(path).generate_input_file().getvalue().decode()


def sample_text(name: str) -> str:
    """Return the text of a sample."""
    return (FOLDER / f"{name}.sli").read_text("ascii")


def option_lines(text: str) -> dict[str, int]:
    """Return the line of each option, counted from 0, by its label."""
    data = InputFile(text).data
    return {
        entry.label: entry.line - 1
        for name in ("WATER", "CALCULATION OPTIONS")
        for entry in entries(data.section(name))
    }


def with_options(text: str, sample: str, labels: set[str]) -> str:
    """Return a file with the lines of some labels taken from a sample."""
    lines, taken = text.split("\n"), sample.split("\n")
    places, places_taken = option_lines(text), option_lines(sample)
    for label in labels:
        lines[places[label]] = taken[places_taken[label]]
    return "\n".join(lines)


def calculated_with(name: str, labels: set[str]) -> OutputFileParser:
    """Calculate a generated file, with options taken from the sample."""
    text = with_options(generated(name), sample_text(name), labels)
    return OutputFileParser(StringIO(calculated(text)))


def of_sample(name: str) -> OutputFileParser:
    """Read the results of D-Settlement."""
    return OutputFileParser(StringIO((FOLDER / f"{name}.sld").read_text("ascii")))


def final_settlements(results: OutputFileParser) -> list[float]:
    """Return the settlement [m] of each vertical, by all loads and at the end."""
    histories: list[Any] = [
        v["time_settlement_per_load"] for v in results.vertical_results.values()
    ]
    return [history[f"load_{history['load_step_count']}"][-1] for history in histories]


def assert_same(found: Any, expected: Any, tolerance: float) -> None:
    """Compare nested mappings and lists of numbers."""
    assert type(found) is type(expected)
    if isinstance(found, dict):
        assert list(found) == pytest.approx(list(expected)) if found else not expected
        for ours, theirs in zip(found.values(), expected.values(), strict=True):
            assert_same(ours, theirs, tolerance)
    else:
        assert found == pytest.approx(expected, abs=tolerance, rel=0)


@pytest.mark.parametrize("name", MATTERING)
def test_verticals_come_out_to_the_last_digit(name: str) -> None:
    found: dict[int, Any] = dict(calculated_with(name, MATTERING[name]).vertical_results)
    expected: dict[int, Any] = dict(of_sample(name).vertical_results)
    assert list(found) == list(expected)
    for ours, theirs in zip(found.values(), expected.values(), strict=True):
        # A blank behind the count keeps D-Settlement's own stresses from being found.
        assert ours.pop("stresses")
        assert not theirs.pop("stresses")
        assert_same(ours, theirs, LAST_DIGIT)


@pytest.mark.parametrize("name", MATTERING)
def test_residual_settlements(name: str) -> None:
    found = calculated_with(name, MATTERING[name]).residual_times
    # Parts of the final settlement, in per cent, are calculated from it before it is rounded.
    assert_same(found, of_sample(name).residual_times, 3e-6)


@pytest.mark.parametrize("name", MATTERING)
def test_each_of_the_options_matters(name: str) -> None:
    expected = final_settlements(of_sample(name))
    for option in MATTERING[name]:
        found = final_settlements(calculated_with(name, MATTERING[name] - {option}))
        assert found != pytest.approx(expected, abs=1e-5, rel=0), option


@pytest.mark.parametrize("name", MATTERING)
def test_without_the_options_settlements_are_near(name: str) -> None:
    found = final_settlements(calculated_with(name, set()))
    expected = final_settlements(of_sample(name))
    for ours, theirs, largest in zip(found, expected, WITHOUT_OPTIONS[name], strict=True):
        assert ours == pytest.approx(theirs, rel=largest)


def test_without_submerging_the_ground_settles_more() -> None:
    # The part of the load that sinks below water keeps its weight.
    [ours] = final_settlements(calculated_with("bm2-5b", {"Unit Weight of Water"}))
    [theirs] = final_settlements(of_sample("bm2-5b"))
    assert 1.2 * theirs < ours < 1.5 * theirs


def test_columns_with_an_underpressure(tmp_path: Path) -> None:
    sample = tmp_path / "columns.sli"
    sample.write_text(drained_columns(), "ascii")
    labels = {"Unit Weight of Water", "Precon. pressure within a layer"}
    text = with_options(generated_again(sample), drained_columns(), labels)
    found, expected = OutputFileParser(StringIO(calculated(text))), of_sample("bm4-8b")
    [ours], [theirs] = (
        [v["time_settlement_per_load"] for v in results.vertical_results.values()]
        for results in (found, expected)
    )
    assert ours["time"] == pytest.approx(theirs["time"])
    # D-Settlement's water pressure falls by a thousandth more.
    assert ours["load_1"] == pytest.approx(theirs["load_1"], rel=6e-4, abs=7e-5)


@pytest.mark.parametrize("name", ["Tutorial-1c", "bm2-5b", "bm3-15d", "bm3-3a", "bm4-8b"])
def test_all_models_with_all_options_of_a_sample(name: str) -> None:
    shared = option_lines(sample_text(name)).keys() & option_lines(generated(name)).keys()
    found = final_settlements(calculated_with(name, shared))
    assert found == pytest.approx(final_settlements(of_sample(name)), rel=1e-4)


def test_analysis_gives_the_results_of_the_worker() -> None:
    text = generated("bm3-13b")
    analysis = DSettlementAnalysis(BytesIO(text.encode()))
    analysis.execute(timeout=60)
    results = OutputFileParser(analysis.get_sld_file())
    assert results.raw_results == calculated_with("bm3-13b", set()).raw_results
