"""Jobs: refusals in plain words, broken contents, errors of the worker itself."""

import pickle
import subprocess
import sys
from typing import Any

import pytest
from sembra.local.worker import calculate_file
from sembra.local.worker.failures import INVALID_BODY, OUT_OF_RANGE, UNSUPPORTED_JOB
from sembra.local.worker.job import run_job

from tests.toolkit.worker.input_file import calculated, input_text, job, refused


def test_message_that_callers_map() -> None:
    assert OUT_OF_RANGE == (
        "The input file holds numbers that are too large or too small to calculate with."
    )


def test_models_that_are_not_covered() -> None:
    message = "The worker does not cover the separate secondary swelling."
    assert refused(input_text(model={"Secondary swelling": 1})) == message


@pytest.mark.parametrize(
    ("option", "what"),
    [
        ("Use fit factors", "fit factors"),
    ],
)
def test_options_that_are_not_covered(option: str, what: str) -> None:
    message = refused(input_text(options={option: 1}))
    assert message == f"The worker does not cover {what}."


def test_one_refusal_names_all_that_stands_in_the_way() -> None:
    text = input_text(model={"Secondary swelling": 1}, options={"Use fit factors": 1})
    assert refused(text) == (
        "The worker does not cover the separate secondary swelling and fit factors."
    )


@pytest.mark.parametrize(
    ("label", "what"),
    [
        ("Probabilistic", "The reliability analysis"),
        ("Horizontal displacements", "The calculation of horizontal displacements"),
        ("Fit for settlement plate", "The fit for a settlement plate"),
    ],
)
def test_what_only_adds_results_is_left_away_with_a_warning(label: str, what: str) -> None:
    result = run_job(job(input_text(model={label: 1})))
    remark = f"{what} that the file asks for is left away. The settlements are the same without it."
    assert (result["error"], result["remarks"]) == (None, [remark])
    assert f"[Warnings]\n      1     number of warnings\n{remark}\n" in calculated(
        input_text(model={label: 1})
    )
    assert run_job(job(input_text()))["remarks"] == []


def test_other_kinds_of_load_are_named() -> None:
    text = input_text().replace("3 : Uniform", "4 : Tank")
    assert refused(text) == 'The worker does not cover tank loads (load "Fill").'


NEEDS = "Soil needs an effective stress above zero."


def test_water_that_carries_the_soil_is_told_by_the_worst_level_of_the_material() -> None:
    floating = input_text(soils={"Clay": {"SoilGamWet": 9.0}}, phreatic_level=0.0)
    assert refused(floating) == (
        "The pore pressure carries more than the weight above it: it leaves an effective stress of "
        f"-4.000 kPa at x = 0 m and a level of -4.000 m, in Clay. {NEEDS}"
    )


@pytest.mark.parametrize("consolidation", [0, 1])
def test_loads_that_take_more_than_there_is_are_named(consolidation: int) -> None:
    def message(*loads: tuple[str, float, float, float, float]) -> str:
        model = {"Calculation type": consolidation}
        return refused(input_text(model=model, loads=[*loads]))

    assert message(("Fill", 0, 5.0, 1.0, 0.0), ("Dug out", 3, -20.0, 1.0, 0.0)) == (
        'The load "Dug out" brings the effective stress down to -14.999 kPa at x = 0 m and a level '
        f"of 0.000 m, in Clay. {NEEDS}"
    )
    assert message(("Dug out", -1, -20.0, 1.0, 0.0)).startswith('The load "Dug out" brings the')
    # Each by itself leaves something; what came first is named as well.
    assert message(("One", 0, -12.0, 1.0, -1.0), ("Two", 9, -12.0, 1.0, -1.0)).startswith(
        'The loads "One" and "Two" bring the effective stress down to '
    )


def test_unloading_to_the_bare_surface_is_calculated() -> None:
    assert calculated(input_text(loads=[("a", -1, 10, 1, 0.0), ("b", 0, -9.99, 1, 0.0)]))


def test_numbers_out_of_range() -> None:
    assert "too large or too small" in refused(input_text(loads=[("Fill", 0, 1e200, 1e200, 0.0)]))
    assert "too large or too small" in refused(input_text(soils={"Clay": {"SoilCp1": 1e-320}}))


@pytest.mark.parametrize("content", [{}, {"name": "other"}, {"name": "dsettlement", "version": 2}])
def test_jobs_of_other_tools(content: dict[str, Any]) -> None:
    assert run_job({"body": ""} | content)["error"] == UNSUPPORTED_JOB


@pytest.mark.parametrize("body", [None, 3, b"AAAA", "no base64!", "AAA", "\u00e9"])
def test_bodies_that_are_no_base64(body: object) -> None:
    content = {"name": "dsettlement", "version": 1, "body": body}
    assert run_job(content)["error"] == INVALID_BODY


def test_an_error_of_the_worker_itself_gives_no_result(monkeypatch: pytest.MonkeyPatch) -> None:
    def broken(*_: object) -> str:
        raise LookupError("gone")

    monkeypatch.setattr(calculate_file, "write_results", broken)
    assert refused(input_text()) == ("The worker failed by an error of its own: LookupError: gone")


def test_the_entry_can_be_sent_to_another_process() -> None:
    assert pickle.loads(pickle.dumps(run_job)) is run_job
    assert pickle.loads(pickle.dumps(run_job(job(input_text()))))["error"] is None


def test_who_only_sends_the_entry_does_not_load_the_calculation() -> None:
    program = "import sys, sembra.local.jobs.running; assert 'numpy' not in sys.modules"
    subprocess.run([sys.executable, "-c", program], check=True)


@pytest.mark.parametrize("error", [ZeroDivisionError(), FloatingPointError(), OverflowError()])
def test_numbers_that_break_the_arithmetic_are_out_of_range(
    monkeypatch: pytest.MonkeyPatch, error: ArithmeticError
) -> None:
    def broken(*_: object) -> str:
        raise error

    monkeypatch.setattr(calculate_file, "write_results", broken)
    assert refused(input_text()) == OUT_OF_RANGE


def test_ground_that_loses_its_height_is_remarked_on() -> None:
    soft = {"SoilCp": 0.5, "SoilCp1": 0.5}
    assert run_job(job(input_text(soils={"Clay": soft})))["remarks"] == [
        "The material Clay is compressed by more than the height of a layer. See whether the "
        "parameters and the loads are as they are meant."
    ]


def test_a_profile_needs_a_load_that_has_one() -> None:
    remarks = run_job(job(input_text(options={"Maintain profile": 1})))["remarks"]
    assert remarks == ["There is no non-uniform load whose profile could be maintained."]


def test_a_superelevation_after_the_end_never_comes() -> None:
    options = {"Maintain profile": 1, "Time superelevation": 10000}
    remarks = run_job(job(input_text(options=options, end=10000)))["remarks"]
    assert remarks[0] == (
        'The load "Superelevation" comes when the calculation has ended, after 10000 days, and '
        "so without effect."
    )


def test_dissipation_of_soil_that_would_float_without_initial_loads_is_left_away() -> None:
    text = input_text(
        phreatic_level=0.0,
        soils={"Clay": {"SoilDrained": 0, "SoilGamWet": 8.0}},
        loads=[("weight", -1, 50.0, 1.0, 0.0), ("Fill", 0, 20.0, 1.0, 0.0)],
        model={"Calculation type": 0},
        options={"Dissipation": 1},
    )
    floats, remark = run_job(job(text))["remarks"]
    assert floats.startswith("The material Clay weighs less than water")
    assert remark.startswith("The dissipation is left away. The pore pressure carries more than ")
    assert "[Dissipation in Layers]" not in calculated(text)


def test_all_materials_without_a_coefficient_are_named() -> None:
    soil = {"SoilDrained": 0, "SoilCv": 0.0}
    text = input_text(layers=[(0.0, "Clay"), (-2.0, "Peat")], soils={"Clay": soil, "Peat": soil})
    assert refused(text) == (
        "The materials Clay and Peat need a coefficient of consolidation greater than zero."
    )


def test_all_loads_of_unknown_kinds_are_named() -> None:
    loads = [(name, 0, 10.0, 1.0, 0.0) for name in ("A", "B", "C")]
    text = input_text(loads=loads, options={"Use fit factors": 1})
    for name in ("A", "C"):
        text = text.replace(f"{name}\n3 : Uniform", f"{name}\n4 : Tank")
    assert refused(text) == (
        'The worker does not cover fit factors, tank loads (load "A") and tank loads (load "C").'
    )
