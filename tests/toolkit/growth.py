"""What is still held after something has been done."""

import gc
import tracemalloc
from collections.abc import Callable


def growth(act: Callable[[], object]) -> int:
    """Return how many bytes of Python are held more after the third time than after the second.

    What libraries remember of a first time doesn't count.
    """

    def held() -> int:
        act()
        gc.collect()
        return tracemalloc.get_traced_memory()[0]

    held()
    tracemalloc.start()
    try:
        before = held()
        return held() - before
    finally:
        tracemalloc.stop()
