"""A limit for the time of one test: a fault can make a loop go on for ever."""

import faulthandler
from collections.abc import Iterator

import pytest

SECONDS = 60


@pytest.hookimpl(wrapper=True)
def pytest_runtest_protocol() -> Iterator[None]:
    """End the process if a test takes too long."""
    faulthandler.dump_traceback_later(SECONDS, exit=True)
    try:
        return (yield)
    finally:
        faulthandler.cancel_dump_traceback_later()
