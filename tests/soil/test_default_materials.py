"""The eleven materials that every model starts with, unless it is told not to."""

from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import Color
from sembra.external.dsettlement import Model1D, _Material, _Model

Factory = Callable[..., Any]

ROWS = [
    ("Dense Sand", 19.0, 21.0, 15728396),
    ("Gravel", 18.0, 20.0, 5244889),
    ("Loam", 20.0, 20.0, 13407356),
    ("Loose Sand", 17.0, 19.0, 42495),
    ("Medium Clay", 17.0, 17.0, 11141025),
    ("Muck", 11.0, 11.0, 4163021),
    ("Peat", 12.0, 12.0, 7077877),
    ("Sand", 18.0, 20.0, 851951),
    ("Soft Clay", 14.0, 14.0, 16575398),
    ("Stiff Clay", 19.0, 19.0, 2763429),
    ("Undetermined", 0.01, 0.02, 16777215),
]


def test_the_table_holds_eleven_rows_in_order() -> None:
    table = _Model._DEFAULT_MATERIALS
    assert [(name, dry, wet, color.deltares) for name, (dry, wet, color) in table.items()] == ROWS
    for row in table.values():
        assert type(row) is tuple
        assert [type(value) for value in row] == [float, float, Color]


def test_the_table_is_one_for_all_models() -> None:
    assert Model1D._DEFAULT_MATERIALS is _Model._DEFAULT_MATERIALS


def test_a_new_model_holds_every_row_in_the_order_of_the_table(new_model_1d: Factory) -> None:
    materials = new_model_1d().materials
    assert [
        (name, material.gam_dry, material.gam_wet, material.color.deltares)
        for name, material in materials.items()
    ] == ROWS
    assert all(type(material) is _Material for material in materials.values())


@pytest.mark.parametrize("false", [False, 0, None, ""])
def test_a_model_can_start_with_none(false: Any, new_model_1d: Factory) -> None:
    assert new_model_1d(create_default_materials=false).materials == {}


def test_any_true_value_asks_for_the_default_materials(new_model_1d: Factory) -> None:
    assert len(new_model_1d(create_default_materials="yes").materials) == 11


def test_two_models_share_the_colors_but_not_the_materials(new_model_1d: Factory) -> None:
    one, other = new_model_1d().materials, new_model_1d().materials
    for name, row in _Model._DEFAULT_MATERIALS.items():
        assert one[name] is not other[name]
        assert one[name].color is other[name].color is row[2]


def test_all_other_parameters_keep_their_defaults(
    new_model_1d: Factory, soil_parameters: dict[str, Any]
) -> None:
    expected = {("pop_" if key == "pop" else key): soil_parameters[key] for key in soil_parameters}
    for material in new_model_1d().materials.values():
        assert material._kwargs == expected


def test_default_materials_are_entered_through_create_material_as_the_last_step(
    new_frame: Factory, frame_class: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    complete = list(vars(new_frame()))
    calls: list[Any] = []

    def create_material(self: Any, *args: Any, **kwargs: Any) -> None:
        assert list(vars(self)) == complete
        calls.append((args, kwargs))

    monkeypatch.setattr(frame_class, "create_material", create_material, raising=False)
    new_frame(create_default_materials=True)
    assert calls == [
        ((name, dry, wet), {"color": color})
        for name, (dry, wet, color) in _Model._DEFAULT_MATERIALS.items()
    ]


def test_the_default_materials_reach_the_document_in_order(new_model_1d: Factory) -> None:
    soils = new_model_1d()._serialize()["soils"]
    keys = ("name", "gam_dry", "gam_wet", "color")
    assert [tuple(entry[key] for key in keys) for entry in soils] == ROWS
