"""Objects carry an ordinary dictionary of attributes."""

from collections.abc import Callable
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.external.dsettlement import DrainageSimpleMode, Metadata, Model1D, _Vertical

Factory = Callable[..., Any]


def test_vars_is_the_live_dictionary_of_an_object() -> None:
    vertical = _Vertical(1.0)
    attributes = vars(vertical)
    assert type(attributes) is dict
    attributes["_x"] = 2.0
    assert vertical.x == 2.0
    assert vertical._serialize() == {"x": 2.0}
    assert vertical.__dict__ is attributes


def test_an_object_takes_further_attributes_and_gives_them_up_again(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.project = "A12"
    assert vars(model)["project"] == "A12"
    del model.project
    with pytest.raises(AttributeError, match=r"^'Model1D' object has no attribute 'project'$"):
        _ = model.project


def test_a_deleted_attribute_is_missed_by_the_operations(new_model_1d: Factory) -> None:
    model = new_model_1d()
    del model._materials
    with pytest.raises(AttributeError, match=r"^'Model1D' object has no attribute '_materials'"):
        model._serialize()


def test_the_dictionary_can_be_replaced_as_a_whole() -> None:
    metadata = Metadata("a")
    metadata.__dict__ = vars(Metadata("b")).copy()
    assert metadata._serialize()["file_name"] == "b"


def test_a_class_takes_further_attributes_and_gives_them_up_again() -> None:
    cls: Any = DrainageSimpleMode
    cls.unit = "days"
    try:
        assert DrainageSimpleMode(1.0, 2.0, 3.0, 4.0).unit == "days"  # type: ignore[attr-defined]
    finally:
        del cls.unit
    assert not hasattr(cls, "unit")


def test_an_object_can_be_made_without_its_constructor() -> None:
    vertical = _Vertical.__new__(_Vertical)
    assert vars(vertical) == {}
    with pytest.raises(AttributeError, match=r"^'_Vertical' object has no attribute '_x'$"):
        _ = vertical.x
    vertical.__init__(3.0)  # type: ignore[misc]
    assert vertical.x == 3.0


def test_a_model_can_be_made_anew_in_its_place(build_story: Factory, new_model_1d: Factory) -> None:
    model = build_story()
    model.__init__(model._calculation_model, model._consolidation_model)
    fresh = new_model_1d()._serialize()
    assert model._serialize() == fresh


def test_the_class_of_an_object_can_be_changed(new_model_1d: Factory) -> None:
    class Later(Model1D):
        def _serialize(self) -> dict[str, Any]:
            return {"later": True}

    model = new_model_1d()
    model.__class__ = Later
    assert model._generate_input()["later"] is True


@pytest.mark.parametrize("name", ["Model1D", "_Vertical", "_Material", "Metadata", "VerticalDrain"])
def test_no_class_fixes_its_attributes(name: str) -> None:
    cls = getattr(dsettlement, name)
    assert "__slots__" not in vars(cls)
    assert "__dict__" in dir(cls)
    assert cls.__eq__ is object.__eq__
    assert cls.__hash__ is object.__hash__


def test_the_text_form_is_that_of_any_object(new_model_1d: Factory) -> None:
    assert repr(new_model_1d()).startswith("<sembra.external.dsettlement.Model1D object at 0x")
    assert repr(Model1D) == "<class 'sembra.external.dsettlement.Model1D'>"
