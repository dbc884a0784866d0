"""The cases of `make verify`: good, or known to be off with the reason."""

import pytest

from verification.calculating import calculate
from verification.cases import Case, default_folders, find_cases
from verification.judging import Verdict, judge, needed, read_list

FOLDERS = [folder for folder in default_folders() if folder.is_dir()]
CASES = find_cases(FOLDERS) if FOLDERS else []
KNOWN = read_list()

pytestmark = pytest.mark.skipif(
    not CASES, reason="no published cases; SEMBRA_SAMPLES and SEMBRA_CASES name their folders"
)


@pytest.mark.parametrize("case", CASES, ids=lambda case: case.name)
def test_published_case(case: Case) -> None:
    outcome = calculate(case)
    verdict = judge(outcome, KNOWN)
    # That an entry of the list is no longer needed is for `make verify` to say.
    assert verdict.passes or verdict is Verdict.MENDED, needed(outcome, verdict)
