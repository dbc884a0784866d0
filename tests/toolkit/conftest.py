"""What the tests of the local edition share."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import _post_on_addon_endpoint

SETTINGS = ("SEMBRA_ADDON_URL", "SEMBRA_ADDON_LIMIT", "SEMBRA_EXECUTOR", "SEMBRA_WORKERS")
PATH = "filldsettlementtemplate/v1/jobs/"


@pytest.fixture(autouse=True)
def _no_settings(monkeypatch: pytest.MonkeyPatch) -> None:
    """Keep the settings of whoever runs the tests out of them."""
    for setting in SETTINGS:
        monkeypatch.delenv(setting, raising=False)


@pytest.fixture
def fill() -> Callable[[dict[str, Any]], str]:
    """Send a document through the service and return the text of the input file."""

    def send(document: dict[str, Any]) -> str:
        answer = _post_on_addon_endpoint(PATH, {"input": document}, timeout=60)
        assert list(answer) == ["input_file"]
        text: str = answer["input_file"]
        return text

    return send
