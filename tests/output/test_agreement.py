"""The native reader against the plain one, on generated texts."""

import pytest

from tests.output.agreement import difference
from tests.output.result_texts import ResultTexts

TEXTS_PER_BATCH = 1000


@pytest.mark.parametrize("batch", range(20))
def test_both_readers_agree_on_generated_texts(batch: int) -> None:
    texts = ResultTexts(f"batch {batch}")
    for _ in range(TEXTS_PER_BATCH):
        text = texts.next()
        assert difference(text) is None, f"replay with: {text!r}"


def test_the_same_seed_gives_the_same_texts() -> None:
    one, other = ResultTexts(7), ResultTexts(7)
    assert [one.next() for _ in range(50)] == [other.next() for _ in range(50)]
