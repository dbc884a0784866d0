"""A further soil model needs a class and a place in the table, and nothing else knows of it."""

from typing import cast

import pytest
from sembra.local.worker.soil_models.koppejan import Koppejan
from sembra.local.worker.soil_models.soil_model import SoilModel
from sembra.local.worker.soil_models.table import SOIL_MODELS

from tests.toolkit.worker.embankments import with_embankment
from tests.toolkit.worker.input_file import calculated
from tests.toolkit.worker.input_section import two_dimensional


class Plain(Koppejan):
    """A model that tells no kinds of settlement apart, and nothing of its parameters."""

    remarks = SoilModel.remarks  # type: ignore[assignment]

    def layer_settlements(self, *_arguments: object) -> None:  # type: ignore[override]
        """Return none."""


@pytest.mark.parametrize("consolidation", [0, 1], ids=["Darcy", "Terzaghi"])
def test_it_is_calculated_and_written(monkeypatch: pytest.MonkeyPatch, consolidation: int) -> None:
    table = cast("dict[int, type[Koppejan]]", SOIL_MODELS)
    monkeypatch.setitem(table, 3, Plain)
    text = with_embankment(two_dimensional())
    for old, new in (
        ("1 : Calculation type", f"{consolidation} : Calculation type"),
        ("0 : Submerging", "1 : Submerging"),
    ):
        assert old in text
        text = text.replace(old, new)
    assert "0 : Model" in text
    by_koppejan, by_plain = (
        calculated(one) for one in (text, text.replace("0 : Model", "3 : Model"))
    )
    assert "[Koppejan settlement]" not in by_plain
    assert amounts(by_plain) == amounts(by_koppejan)


def amounts(text: str) -> str:
    return text.partition("[Amounts of Loads]\n")[2].partition("[End of Amounts of Loads]")[0]
