"""The native reader against the plain one, on generated texts.

SEMBRA_GENERATED_TEXTS says how many. They are others in each run, unless SEMBRA_SEED names one.
"""

import os

import pytest

from tests.output.agreement import difference
from tests.output.result_texts import ResultTexts
from tests.seeds import new_seed

TEXTS = int(os.environ.get("SEMBRA_GENERATED_TEXTS", "5000"))
BATCHES = 20
SEED = new_seed()


@pytest.mark.parametrize("batch", range(BATCHES))
def test_both_readers_agree_on_generated_texts(batch: int) -> None:
    print(f"SEMBRA_SEED={SEED}")
    texts = ResultTexts(f"{SEED} batch {batch}")
    for _ in range(TEXTS // BATCHES):
        text = texts.next()
        assert difference(text) is None, f"replay with: {text!r}"


def test_the_same_seed_gives_the_same_texts() -> None:
    one, other = ResultTexts(7), ResultTexts(7)
    assert [one.next() for _ in range(50)] == [other.next() for _ in range(50)]
