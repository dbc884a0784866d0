"""Several threads on one model, and on one result text."""

import sys
import threading
from collections.abc import Callable, Iterator
from concurrent.futures import ThreadPoolExecutor
from typing import Any

import pytest

from tests.memory.operations import Section, read_results, result_text
from tests.output.blocks import parser_of

THREADS = 8
ROUNDS = 60


@pytest.fixture(autouse=True)
def switch_often() -> Iterator[None]:
    """Let the interpreter change threads at nearly every step."""
    interval = sys.getswitchinterval()
    sys.setswitchinterval(1e-6)
    yield
    sys.setswitchinterval(interval)


def at_once(work: Callable[[int], Any]) -> list[Any]:
    """What the work of each thread comes to; all begin together."""
    start = threading.Barrier(THREADS)

    def begin(number: int) -> Any:
        start.wait()
        return work(number)

    with ThreadPoolExecutor(THREADS) as pool:
        return list(pool.map(begin, range(THREADS)))


def test_threads_add_to_one_model_and_nothing_is_lost() -> None:
    model = Section().model
    before = [len(model._points), len(model._boundaries), len(model._pl_lines)]

    def work(number: int) -> None:
        for round_number in range(ROUNDS):
            y = 10.0 + number + round_number * THREADS
            model.create_pl_line([model.create_point(x, -y) for x in (0.0, 100.0)])
            model._create_boundary([model.create_point(x, y) for x in (0.0, 100.0)])

    at_once(work)
    made = THREADS * ROUNDS
    after = [len(model._points), len(model._boundaries), len(model._pl_lines)]
    assert [b - a for a, b in zip(before, after, strict=True)] == [4 * made, made, made]
    areas = [boundary.area_above_horizontal() for boundary in model._boundaries]
    assert areas == sorted(areas)
    assert len(set(model._boundaries)) == len(model._boundaries)


def test_a_model_is_written_while_threads_change_it() -> None:
    model = Section().model

    def work(number: int) -> None:
        for round_number in range(ROUNDS):
            if number % 2:
                model.create_vertical((number * ROUNDS + round_number) % 97 + 0.5)
                vars(model)
            else:
                document = model._serialize()
                xs = [vertical["x"] for vertical in document["verticals"]]
                assert xs == sorted(xs)

    at_once(work)


def test_threads_read_one_text() -> None:
    parser = parser_of(result_text())
    expected = repr(read_results(parser))
    assert (
        at_once(lambda _: repr([read_results(parser) for _ in range(ROUNDS)][-1]))
        == [expected] * THREADS
    )
