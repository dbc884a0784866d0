"""The abstract loads `_Load` and `_OtherLoad`."""

from abc import ABC, ABCMeta
from typing import Any

import pytest
from sembra.external.dsettlement import _Load, _OtherLoad, _UniformLoad


def test_the_family_of_loads() -> None:
    assert _Load.__bases__ in ((object,), (ABC,))
    assert _OtherLoad.__bases__ == (_Load,)
    assert _UniformLoad.__bases__ == (_OtherLoad,)


@pytest.mark.parametrize("cls", [_Load, _OtherLoad])
def test_serialising_is_left_to_each_kind_of_load(cls: Any) -> None:
    assert type(cls) is ABCMeta
    assert cls.__abstractmethods__ == frozenset({"_serialize"})
    assert "_serialize" in vars(cls)
    assert vars(cls)["_serialize"].__isabstractmethod__ is True


@pytest.mark.parametrize("base", [_Load, _OtherLoad])
def test_a_kind_of_load_finds_nothing_to_serialise_in_its_base(base: Any) -> None:
    class Strip(base):  # type: ignore[misc]
        def _serialize(self, name: str) -> Any:
            return super()._serialize(name)

    assert Strip()._serialize("a") is None


@pytest.mark.parametrize("cls", [_Load, _OtherLoad])
def test_an_abstract_load_cannot_be_made(cls: Any) -> None:
    message = (
        f"Can't instantiate abstract class {cls.__name__} "
        "without an implementation for abstract method '_serialize'"
    )
    with pytest.raises(TypeError) as refused:
        cls()
    assert str(refused.value) == message


def test_a_load_that_leaves_serialising_open_cannot_be_made() -> None:
    partial: Any = ABCMeta("Partial", (_OtherLoad,), {})
    with pytest.raises(TypeError, match="abstract class Partial without an implementation"):
        partial()


@pytest.mark.parametrize("base", [_Load, _OtherLoad])
def test_further_kinds_of_load_fit_in(base: Any) -> None:
    class Strip(base):  # type: ignore[misc]
        def _serialize(self, name: str) -> dict[str, Any]:
            return {"name": name, "type": 99}

    strip = Strip()
    assert isinstance(strip, _Load)
    assert vars(strip) == {}
    assert strip._serialize("a") == {"name": "a", "type": 99}


def test_a_uniform_load_is_concrete() -> None:
    assert type(_UniformLoad) is ABCMeta
    assert _UniformLoad.__abstractmethods__ == frozenset()
    assert isinstance(_UniformLoad(0, 1.0, 1.0, 0.0), _Load)
