"""`Model1D`: its options, its default geometry, what it reads and what it writes."""

from abc import ABCMeta
from collections.abc import Callable
from typing import Any

import pytest
from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    Model1D,
    _Geometry1D,
    _Model,
    _Vertical,
)

Factory = Callable[..., Any]

OPTIONS = {
    "natural_strain": False,
    "water_unit_weight": 9.81,
    "verticals_discretization": 100,
    "verticals_z_coordinate": 0.0,
    "maintain_profile": False,
    "profile_unit_weight_above_phreatic_level": 10.0,
    "profile_unit_weight_below_phreatic_level": 10.0,
    "end_of_settlement_calculation": 10000,
    "vertical_drain": None,
}


def test_it_is_a_concrete_model() -> None:
    assert Model1D.__bases__ == (_Model,)
    assert type(Model1D) is ABCMeta
    assert Model1D.__abstractmethods__ == frozenset()


def test_it_adds_one_field_to_those_of_the_frame(new_model_1d: Factory, new_frame: Factory) -> None:
    assert list(vars(new_model_1d())) == [*vars(new_frame()), "_geometry"]


def test_the_frame_is_made_with_three_positional_and_nine_keyword_arguments(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    calls: list[Any] = []
    monkeypatch.setattr(_Model, "__init__", lambda self, *args, **kw: calls.append((args, kw)))
    members = (CalculationModel.ISOTACHE, ConsolidationModel.DARCY)
    Model1D(*members)
    given = {name: object() for name in OPTIONS}
    make: Any = Model1D
    make(*members, "some", **given)
    assert calls == [((*members, True), OPTIONS), ((*members, "some"), given)]
    assert [list(options) for _, options in calls] == [list(OPTIONS), list(OPTIONS)]


def test_geometry_and_vertical_are_set_after_the_frame(monkeypatch: pytest.MonkeyPatch) -> None:
    def make_frame(self: Any, *args: Any, **options: Any) -> None:
        assert vars(self) == {}

    monkeypatch.setattr(_Model, "__init__", make_frame)
    model = Model1D(CalculationModel.ISOTACHE, ConsolidationModel.DARCY)
    assert list(vars(model)) == ["_geometry", "_verticals"]


def test_a_new_model_has_the_default_geometry(new_model_1d: Factory) -> None:
    model = new_model_1d()
    assert type(model._geometry) is _Geometry1D
    assert model.bottom_level == -10.0
    assert model.top_level == 0.0
    assert model.layers == [(0.0, "Undetermined")]
    assert model.phreatic_level is None
    assert model._min_vertical_drains == -10.0
    assert model._max_vertical_drains == 0.0
    assert type(model.layers[0]) is tuple
    assert [type(level) for level in (model.bottom_level, model.top_level)] == [float, float]


def test_every_model_has_a_geometry_of_its_own(new_model_1d: Factory) -> None:
    one, other = new_model_1d(), new_model_1d()
    one._geometry._layers.append((-1.0, "Sand"))
    assert other.layers == [(0.0, "Undetermined")]


def test_the_default_layer_stays_even_if_there_is_no_such_material(new_model_1d: Factory) -> None:
    model = new_model_1d(create_default_materials=False)
    assert model.layers == [(0.0, "Undetermined")]
    assert model._serialize()["soils"] == []


def test_the_one_vertical_stands_at_zero(new_model_1d: Factory) -> None:
    model = new_model_1d()
    (vertical,) = model.verticals
    assert type(vertical) is _Vertical
    assert type(vertical.x) is float
    assert model._serialize()["verticals"] == [{"x": 0.0}]
    assert not hasattr(model, "create_vertical")
    model.update_geometry(-1.0, [(1.0, "Loam")])
    assert model.verticals == [vertical]


def test_non_uniform_loads_do_not_exist_in_one_dimension(new_model_1d: Factory) -> None:
    model = new_model_1d()
    assert not hasattr(model, "create_non_uniform_load")
    assert model._serialize()["non_uniform_loads"] == []


@pytest.mark.parametrize(
    "name",
    [
        "bottom_level",
        "top_level",
        "layers",
        "phreatic_level",
        "_min_vertical_drains",
        "_max_vertical_drains",
    ],
)
def test_what_concerns_the_geometry_is_read_only(name: str, new_model_1d: Factory) -> None:
    declared = vars(Model1D)[name]
    assert isinstance(declared, property)
    assert declared.fset is None
    message = rf"^property '{name}' of 'Model1D' object has no setter$"
    with pytest.raises(AttributeError, match=message):
        setattr(new_model_1d(), name, 1.0)


def test_levels_are_read_from_the_geometry_of_that_moment(new_model_1d: Factory) -> None:
    model = new_model_1d()
    geometry = _Geometry1D(-7, [(3, "a"), (2, "b")], 1)
    model._geometry = geometry
    assert (model.bottom_level, model.top_level, model.phreatic_level) == (-7, 3, 1)
    assert (model._min_vertical_drains, model._max_vertical_drains) == (-7, 3)
    assert model.layers == [(3, "a"), (2, "b")]
    geometry.phreatic_level = 2
    assert model.phreatic_level == 2


def test_changing_the_list_of_layers_does_not_change_the_model(new_model_1d: Factory) -> None:
    model = new_model_1d()
    model.layers.append((-1.0, "Sand"))
    assert model.layers == [(0.0, "Undetermined")]


def test_the_check_of_the_frame_is_not_overridden() -> None:
    assert "_validate" not in vars(Model1D)


def test_model_type_and_geometry_are_the_last_two_keys(
    new_model_1d: Factory, new_frame: Factory
) -> None:
    document = new_model_1d()._serialize()
    assert list(document) == [*new_frame()._serialize(), "model_type", "geometry"]
    assert type(document["model_type"]) is int
    assert document["model_type"] == 0
    assert document["geometry"] == {
        "layers": [(0.0, "Undetermined")],
        "bottom_level": -10.0,
        "phreatic_level": None,
    }


def test_the_document_starts_from_a_copy_of_that_of_the_frame(
    new_model_1d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    base: dict[str, Any] = {"model_type": "to overwrite", "other": []}
    monkeypatch.setattr(_Model, "_serialize", lambda self: base)
    document = new_model_1d()._serialize()
    assert list(document) == ["model_type", "other", "geometry"]
    assert document["model_type"] == 0
    assert document["other"] is base["other"]
    assert base == {"model_type": "to overwrite", "other": []}


def test_serialising_leaves_the_model_as_it_was(build_story: Factory) -> None:
    model = build_story()
    before = dict(vars(model))
    assert model._serialize() == model._serialize()
    assert vars(model) == before


def test_the_documented_usage_goes_from_model_to_file(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    model.create_material("my_mat", 21.0, 19.0, color=Color(0, 0, 0))
    model.update_geometry(-1.0, [(1.0, "Loam"), (0.0, "my_mat")], phreatic_level=-3.0)
    model.create_uniform_load("my_load", 0, 0.001, 0.0, 0.0)
    assert model.generate_input_file().getvalue() == b"Input file for D-Settlement\r\n"
    assert post.document["geometry"] == {
        "layers": [(1.0, "Loam"), (0.0, "my_mat")],
        "bottom_level": -1.0,
        "phreatic_level": -3.0,
    }
    assert post.document["soils"][-1]["name"] == "my_mat"
    assert post.document["other_loads"][0]["name"] == "my_load"
