"""Overrides on drains, loads, metadata and the like are honoured wherever they are used."""

from collections.abc import Callable
from io import BytesIO
from typing import Any

import pytest
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    DrainGrid,
    DrainType,
    DSettlementAnalysis,
    Metadata,
    VerticalDrain,
    _Material,
    _OtherLoad,
    _UniformLoad,
    _Vertical,
)

Factory = Callable[..., Any]


def test_the_check_reads_the_drain_through_its_attributes(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Moved(VerticalDrain):
        @property
        def position_drain(self) -> float:
            return 77.0

    model = new_model_1d(vertical_drain=new_strip_drain(Moved))
    with pytest.raises(ModelError, match=r"'position_drain' \(77.0\) must be between"):
        model._validate()
    assert model._serialize()["vertical_drain"]["position_drain"] == 0.0


def test_a_drain_writes_itself_as_its_class_says(
    new_model_1d: Factory, new_strip_drain: Factory
) -> None:
    class Noted(VerticalDrain):
        def _serialize(self) -> dict[str, Any]:
            return super()._serialize() | {"note": "x"}

    document = new_model_1d(vertical_drain=new_strip_drain(Noted))._serialize()
    assert list(document["vertical_drain"])[-1] == "note"
    assert len(document["vertical_drain"]) == 18


def test_a_drain_can_bring_its_own_constructor() -> None:
    class Column(VerticalDrain):
        def __init__(self, bottom_position: float) -> None:
            super().__init__(
                *(DrainType.COLUMN, 0.0, 100.0, bottom_position, 1.0, 0.3),
                grid=DrainGrid.RECTANGULAR,
                start_of_drainage=0.0,
                phreatic_level_in_drain=0.0,
            )

    assert Column(-3.0)._serialize()["bottom_position"] == -3.0
    assert Column(-3.0)._serialize()["type"] == 1


def test_metadata_write_themselves_as_their_class_says(new_model_1d: Factory, post: Any) -> None:
    class Signed(Metadata):
        def __init__(self, engineer: str) -> None:
            super().__init__(created_by=engineer)

        def _serialize(self) -> dict[str, str]:
            return super()._serialize() | {"company": "ours"}

    new_model_1d().generate_input_file(Signed("me"))
    assert (post.document["created_by"], post.document["company"]) == ("me", "ours")


def test_a_vertical_and_a_material_are_read_through_their_properties(new_frame: Factory) -> None:
    class Shifted(_Vertical):
        @property
        def x(self) -> float:
            return super().x + 1

    class Red(_Material):
        @property
        def color(self) -> Any:
            return Color.from_deltares(255)

    assert new_frame()._generate_input(None, Shifted(1.0))["dissipation_calculation"] == 2.0
    assert Shifted(1.0)._serialize() == {"x": 1.0}
    assert Red(1.0, 2.0)._serialize("a")["color"] == 255


def test_a_uniform_load_of_ones_own_stands_among_the_others(new_model_1d: Factory) -> None:
    class Ramp(_UniformLoad):
        def __init__(self, days: int) -> None:
            super().__init__(days, 18.0, 1.0, 0.0)

        def _serialize(self, name: str) -> dict[str, Any]:
            return super()._serialize(name.upper()) | {"days": self.time}

    model = new_model_1d()
    model._add_other_load("ramp", Ramp(7))
    assert model._serialize()["other_loads"][0]["name"] == "RAMP"
    assert model._serialize()["other_loads"][0]["days"] == 7


def test_an_analysis_fetches_through_an_overridden_get_output_file() -> None:
    class Cached(DSettlementAnalysis):
        def get_output_file(self, extension: str = ".sld", *, as_file: bool = False) -> Any:
            return BytesIO(f"{extension} {as_file}".encode())

    sld_file: Any = Cached(BytesIO()).get_sld_file()
    assert sld_file.getvalue() == ".sld False"


def test_a_subclass_may_fix_its_attributes() -> None:
    class Slotted(_Vertical):
        __slots__ = ("note",)

    vertical: Any = Slotted(1.0)
    vertical.note = "x"
    assert vars(vertical) == {"_x": 1.0}


def test_every_subclass_is_announced_to_the_application() -> None:
    announced: list[type] = []

    class Base(Metadata):
        def __init_subclass__(cls, **options: Any) -> None:
            super().__init_subclass__(**options)
            announced.append(cls)

    class Derived(Base):
        pass

    assert announced == [Derived]


def test_a_load_of_a_virtual_subclass_counts_as_a_load() -> None:
    class Foreign:
        pass

    _OtherLoad.register(Foreign)
    assert isinstance(Foreign(), _OtherLoad)
