"""`_Material`, and the order of the materials in the document."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import Color
from sembra.external.dsettlement import _Material

Factory = Callable[..., Any]

BLACK = Color(0, 0, 0)


@pytest.fixture
def random_colors(monkeypatch: pytest.MonkeyPatch) -> list[Any]:
    """Note every colour that is drawn at random."""
    drawn: list[Any] = []

    def draw(cls: Any) -> Any:
        drawn.append(cls.from_deltares(len(drawn) + 1))
        return drawn[-1]

    monkeypatch.setattr(Color, "random", classmethod(draw))
    return drawn


def test_fields_are_stored_in_order_and_as_given() -> None:
    dry: Any = object()
    wet: Any = object()
    material: Any = _Material(dry, wet, BLACK, cohesion=1, phi="x")
    assert list(vars(material)) == ["gam_dry", "gam_wet", "_color", "_kwargs"]
    assert material.gam_dry is dry
    assert material.gam_wet is wet
    assert material.color is BLACK
    assert material._kwargs == {"cohesion": 1, "phi": "x"}
    assert list(material._kwargs) == ["cohesion", "phi"]
    assert type(material._kwargs) is dict


def test_without_further_parameters_the_mapping_is_empty() -> None:
    assert vars(_Material(1.0, 2.0, color=BLACK))["_kwargs"] == {}


def test_without_a_color_one_is_drawn_at_random(random_colors: list[Any]) -> None:
    first, second = _Material(1.0, 2.0), _Material(1.0, 2.0, None)
    assert [first.color, second.color] == random_colors
    assert first.color is random_colors[0]
    assert second.color is random_colors[1]


def test_a_given_color_is_kept_and_none_is_drawn(random_colors: list[Any]) -> None:
    assert _Material(1.0, 2.0, color=BLACK).color is BLACK
    assert random_colors == []


@pytest.mark.parametrize("false", [0, "", [], False])
def test_the_color_is_tested_for_truth_and_not_for_none(
    false: Any, random_colors: list[Any]
) -> None:
    assert _Material(1.0, 2.0, color=false).color is random_colors[0]


def test_the_color_is_read_only() -> None:
    material: Any = _Material(1.0, 2.0, BLACK)
    with pytest.raises(
        AttributeError, match=r"^property 'color' of '_Material' object has no setter$"
    ):
        material.color = BLACK


def test_a_material_writes_its_name_color_weights_and_then_all_other_parameters() -> None:
    color = Color.from_deltares(42495)
    document = _Material(17.0, 19, color, pop_=5.0, cohesion=1)._serialize("Loose Sand")
    assert list(document.items()) == [
        ("name", "Loose Sand"),
        ("color", 42495),
        ("gam_dry", 17.0),
        ("gam_wet", 19),
        ("pop_", 5.0),
        ("cohesion", 1),
    ]
    assert type(document["gam_wet"]) is int


def test_further_parameters_overwrite_earlier_keys_of_the_same_name_in_their_place() -> None:
    further: dict[str, Any] = {"phi": 30.0, "name": "other"}
    document = _Material(1.0, 2.0, BLACK, **further)._serialize("name given")
    assert list(document) == ["name", "color", "gam_dry", "gam_wet", "phi"]
    assert document["name"] == "other"


def test_each_call_gives_a_new_mapping_and_leaves_the_material_as_it_was() -> None:
    material: Any = _Material(1.0, 2.0, BLACK, phi=30.0)
    first = material._serialize("a")
    first["phi"] = 0.0
    assert type(first) is dict
    assert material._kwargs == {"phi": 30.0}
    assert material._serialize("a")["phi"] == 30.0


def test_a_color_without_a_code_fails_when_the_code_is_read() -> None:
    material = _Material(1.0, 2.0, color="black")  # type: ignore[arg-type]
    with pytest.raises(AttributeError, match=r"^'str' object has no attribute 'deltares'$"):
        material._serialize("a")


def test_materials_are_serialised_in_the_order_of_their_names(new_frame: Factory) -> None:
    model = new_frame()
    for name in ("peat", "Zand", "Ångström", "", "Peat 2", "Peat", "10", "9"):
        model.create_material(name, 1.0, 2.0)
    names = [entry["name"] for entry in model._serialize_materials()]
    assert names == ["", "10", "9", "Peat", "Peat 2", "Zand", "peat", "Ångström"]
    assert [entry["name"] for entry in model._serialize()["soils"]] == names
    assert list(model.materials) == ["peat", "Zand", "Ångström", "", "Peat 2", "Peat", "10", "9"]


def test_every_material_writes_itself_under_its_name(new_frame: Factory) -> None:
    class Recorder:
        def _serialize(self, name: str) -> Any:
            return self, name

    model, one, other = new_frame(), Recorder(), Recorder()
    model._materials.update({"b": one, "a": other})
    assert model._serialize_materials() == [(other, "a"), (one, "b")]


def test_names_that_do_not_compare_are_pythons_type_error(new_frame: Factory) -> None:
    model = new_frame()
    model._materials.update({"a": _Material(1.0, 2.0), 1: _Material(1.0, 2.0)})
    with pytest.raises(
        TypeError, match=r"^'<' not supported between instances of 'int' and 'str'$"
    ):
        model._serialize_materials()
