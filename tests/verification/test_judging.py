"""Which cases are off, and what the list of known ones says of them."""

from pathlib import Path

import numpy as np
import pytest

from tests.verification.made_verticals import vertical
from verification.calculating import Outcome
from verification.cases import Case
from verification.comparing import compare
from verification.judging import Entry, Verdict, judge, needed, read_list
from verification.reading import Vertical


def outcome(*ours: Vertical, error: str | None = None) -> Outcome:
    published = [vertical() for _ in ours]
    differences = compare(published, ours) if ours else []
    return Outcome(Case(Path("made.sli")), 0.0, error, published, list(ours), differences)


REFUSED = outcome(error="The worker does not cover it.")
GOOD = outcome(vertical(1.0009))
OFF = outcome(vertical(1.003))
WITHOUT_LOADS = outcome(vertical(loads=None))


@pytest.mark.parametrize(
    ("result", "entry", "verdict"),
    [
        (GOOD, None, Verdict.GOOD),
        (OFF, None, Verdict.OFF),
        (REFUSED, None, Verdict.OFF),
        (WITHOUT_LOADS, None, Verdict.OFF),
        (GOOD, Entry("why", final=0.4), Verdict.MENDED),
        (OFF, Entry("why", final=0.4), Verdict.KNOWN),
        (OFF, Entry("why", final=0.2), Verdict.WORSE),
        (OFF, Entry("why", curve=5.0), Verdict.WORSE),
        (OFF, Entry("why", refused=True), Verdict.WORSE),
        (REFUSED, Entry("why", refused=True), Verdict.KNOWN),
        (REFUSED, Entry("why", final=50.0), Verdict.WORSE),
        (WITHOUT_LOADS, Entry("why", missing=True), Verdict.KNOWN),
        (WITHOUT_LOADS, Entry("why", final=5.0), Verdict.WORSE),
    ],
)
def test_verdicts(result: Outcome, entry: Entry | None, verdict: Verdict) -> None:
    assert judge(result, {} if entry is None else {"made": entry}) is verdict


def test_any_curve_can_be_off() -> None:
    loads = vertical().loads
    assert loads is not None
    wrong = loads.copy()
    wrong[2, 0] += 0.006
    assert judge(outcome(vertical(loads=wrong)), {}) is Verdict.OFF
    assert judge(outcome(vertical(residual=vertical().residual + 0.006)), {}) is Verdict.OFF


def test_kinds_and_dissipation_can_be_off() -> None:
    kinds, dissipation = vertical().kinds, vertical().dissipation
    assert kinds is not None
    assert dissipation is not None
    for part, verdict in ((0.004, Verdict.GOOD), (0.006, Verdict.OFF)):
        assert judge(outcome(vertical(kinds=kinds + part)), {}) is verdict
        assert (
            judge(outcome(vertical(dissipation=dissipation + np.array([0, part, 0]))), {})
            is verdict
        )


@pytest.mark.parametrize("kind", ["initial_stress", "final_stress", "stresses", "preconsolidation"])
def test_any_stress_can_be_off(kind: str) -> None:
    published = getattr(vertical(), kind)
    for part, verdict in ((0.004, Verdict.GOOD), (0.006, Verdict.OFF)):
        stress = published + part * published.max()
        assert judge(outcome(vertical(**{kind: stress})), {}) is verdict


def test_only_good_and_known_cases_pass() -> None:
    assert [verdict for verdict in Verdict if verdict.passes] == [Verdict.GOOD, Verdict.KNOWN]


def test_what_has_to_be_done_is_told() -> None:
    assert needed(GOOD, Verdict.MENDED) == (
        "made is good now: take it out of verification/known.toml."
    )
    assert needed(REFUSED, Verdict.OFF) == ("made is not calculated: The worker does not cover it.")
    assert needed(OFF, Verdict.OFF).startswith("made is off: final 0.3 %, curve 0.3 %")
    assert needed(OFF, Verdict.WORSE).startswith("made is further off than listed: final 0.3 %")
    assert needed(WITHOUT_LOADS, Verdict.OFF).endswith("; vertical 1: no settlement per load.")


def test_the_list_can_be_read(tmp_path: Path) -> None:
    assert all(entry.reason for entry in read_list().values())
    path = tmp_path / "known.toml"
    path.write_text('[bm3-1a]\nreason = "why"\nfinal = 0.2\n', encoding="utf-8")
    assert read_list(path) == {"bm3-1a": Entry("why", final=0.2)}
    path.write_text("[bm3-1a]\nfinal = 0.2\n", encoding="utf-8")
    with pytest.raises(TypeError, match="reason"):
        read_list(path)
