"""Reading keeps nothing, whatever it comes to."""

import gc
import sys

from sembra.external.dsettlement import OutputFileParser

from tests.output.agreement import outcomes
from tests.output.result_texts import ResultTexts


def test_reading_the_same_texts_again_keeps_no_memory() -> None:
    source = ResultTexts("leaks")
    texts = [source.next() for _ in range(400)]

    def blocks_after_reading() -> int:
        for text in texts:
            outcomes(OutputFileParser, text)
        gc.collect()
        return sys.getallocatedblocks()

    blocks_after_reading()
    before = blocks_after_reading()
    for _ in range(5):
        after = blocks_after_reading()
    # One object kept per text would be two thousand by now.
    assert after - before < 200
