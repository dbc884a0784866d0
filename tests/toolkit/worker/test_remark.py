"""Remarks on several things in one sentence."""

from sembra.local.worker.job import run_job
from sembra.local.worker.remark import Remark, sentences

from tests.toolkit.worker.input_file import input_text, job


def fast(*names: str, cv: int = 3) -> Remark:
    """A remark on materials."""
    return Remark("material", names, "consolidate", f"at once, by {cv} m²/s")


def test_remarks_alike_but_for_their_names_are_one() -> None:
    told: list[Remark | str] = [
        fast("Peat"),
        "A sentence.",
        fast("Clay", "Peat"),
        fast("Sand"),
        "A sentence.",
    ]
    assert sentences(told) == [
        "The materials Peat, Clay and Sand consolidate at once, by 3 m²/s.",
        "A sentence.",
    ]


def test_remarks_that_say_something_else_stay_apart() -> None:
    assert sentences([fast("Peat"), fast("Clay", cv=5)]) == [
        "The material Peat consolidates at once, by 3 m²/s.",
        "The material Clay consolidates at once, by 5 m²/s.",
    ]


def test_one_thing_is_what_several_are() -> None:
    soft = [Remark("material", (name,), "are", "soft") for name in ("Peat", "Clay")]
    assert sentences(soft[:1]) == ["The material Peat is soft."]
    assert sentences(soft) == ["The materials Peat and Clay are soft."]


def test_nothing_is_remarked_on_where_there_is_nothing() -> None:
    assert sentences([]) == []


def test_what_many_materials_of_a_file_have_in_common_is_told_once() -> None:
    names = ["Upper", "Middle", "Lower"]
    soil = {"SoilDrained": 0, "SoilCv": 100.0, "SoilGamWet": 9.5}
    text = input_text(
        soils=dict.fromkeys(names, soil),
        layers=[(float(-place), name) for place, name in enumerate(names)],
        phreatic_level=0.0,
        loads=[
            ("Fill", -1, 20.0, 1.0, 0.0),
            ("A", 10_000, 9.0, 1.0, 0.0),
            ("B", 10_001, 9.0, 1.0, 0.0),
        ],
    )
    late, fast, light = run_job(job(text))["remarks"]
    assert late.startswith('The loads "A" and "B" come when the calculation has ended')
    assert fast.startswith("The materials Upper, Middle and Lower consolidate almost at once")
    assert light.startswith("The materials Upper, Middle and Lower weigh less than water")
