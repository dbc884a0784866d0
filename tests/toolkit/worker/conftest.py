"""What the tests of the worker share."""

import pytest


@pytest.fixture(autouse=True)
def _no_console(monkeypatch: pytest.MonkeyPatch) -> None:
    """Keep a D-Settlement of whoever runs the tests out of them."""
    monkeypatch.delenv("SEMBRA_DSETTLEMENT_CONSOLE", raising=False)
