"""The document of `Model2D`."""

import copy
from collections.abc import Callable
from typing import Any

import pytest
from sembra.external.dsettlement import Model2D, _Boundary, _Layer, _PlLine, _Point

Factory = Callable[..., Any]

KEYS = [
    "calculation_model",
    "consolidation_model",
    "strain_type",
    "maintain_profile",
    "profile_time",
    "profile_unit_weight_above_phreatic_level",
    "profile_unit_weight_below_phreatic_level",
    "end_of_settlement_calculation",
    "verticals_discretization",
    "verticals_z_coordinate",
    "stress_distribution_loads",
    "has_vertical_drains",
    "soils",
    "verticals",
    "non_uniform_loads",
    "other_loads",
    "residual_times",
    "vertical_drain",
    "model_type",
    "points",
    "curves",
    "boundaries",
    "pl_lines",
    "layers",
    "phreatic_line",
    "date",
    "time",
    "file_name",
    "company",
    "created_by",
    "title_1",
    "title_2",
    "title_3",
    "dissipation_calculation",
]


def test_the_story_comes_out_to_the_letter(build_story_2d: Factory, post: Any) -> None:
    model = build_story_2d()
    model.generate_input_file(dissipation_calculation=model.verticals[1])
    document = post.document
    assert list(document) == KEYS
    expected = {
        "has_vertical_drains": True,
        "verticals": [{"x": 45.0}, {"x": 50.0}, {"x": 55.0}],
        "non_uniform_loads": [
            {
                "name": "load1",
                "points": [(25, 10.0), (50.0, 12.0), (75, 10.0)],
                "time": 0,
                "end_time": 0,
                "gamma_dry": 10.0,
                "gamma_wet": 10.0,
                "temporary": False,
            }
        ],
        "residual_times": [1, 4, 2, 5],
        "model_type": 1,
        "points": [
            (0.0, 0.0, 0),
            (100.0, 0.0, 0),
            (0.0, 5.0, 0),
            (50.0, 5.0, 0),
            (100.0, 2.5, 0),
            (0.0, 5.0, 0),
            (50.0, 5.0, 0),
            (100.0, 7.5, 0),
            (0.0, 10.0, 0),
            (25, 10.0, 0),
            (75, 10.0, 0),
            (100.0, 10.0, 0),
            (0.0, 4.0, 0),
            (100.0, 4.0, 0),
            (0.0, 6.0, 0),
            (100.0, 6.0, 0),
        ],
        "curves": [
            (1, 2),
            (3, 4),
            (4, 5),
            (3, 4),
            (4, 8),
            (9, 10),
            (10, 11),
            (11, 12),
            (13, 14),
            (15, 16),
        ],
        "boundaries": [[1], [2, 3], [2, 5], [6, 7, 8]],
        "pl_lines": [[9], [10]],
        "layers": [
            {
                "material": "Sand",
                "boundary_top": 1,
                "boundary_bottom": 0,
                "pl_top": 99,
                "pl_bottom": 2,
            },
            {
                "material": "Soft Clay",
                "boundary_top": 2,
                "boundary_bottom": 1,
                "pl_top": 99,
                "pl_bottom": 99,
            },
            {
                "material": "Loam",
                "boundary_top": 3,
                "boundary_bottom": 2,
                "pl_top": 1,
                "pl_bottom": 99,
            },
        ],
        "phreatic_line": 1,
        "dissipation_calculation": 50.0,
    }
    assert repr({key: document[key] for key in expected}) == repr(expected)
    assert [b.area_above_horizontal() for b in model._boundaries] == [0.0, 437.5, 562.5, 1000.0]
    assert (model._min_vertical_drains, model._max_vertical_drains) == (0.0, 10.0)


def test_serialising_changes_nothing_and_gives_new_containers(build_story_2d: Factory) -> None:
    model = build_story_2d()
    before = repr([list(chain.curves) for chain in model._boundaries])
    first, second = model._serialize(), model._serialize()
    assert first == second
    for key in ("points", "curves", "boundaries", "pl_lines", "layers"):
        assert first[key] is not second[key]
    assert repr([list(chain.curves) for chain in model._boundaries]) == before


def test_a_point_that_nothing_uses_stands_in_the_list(new_model_2d: Factory) -> None:
    model = new_model_2d()
    model.create_point(50, 1.0)
    assert model._serialize_points() == [(0.0, 0.0, 0), (100.0, 0.0, 0), (50, 1.0, 0)]
    assert repr(model._serialize_points()[2]) == "(50, 1.0, 0)"
    assert model._serialize_curves() == [(1, 2)]


def test_references_go_to_the_first_of_equal_points(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    model.create_point(0, 3)
    model.create_pl_line(level(model, 3.0))
    assert model._serialize_curves() == [(1, 2), (3, 5)]


def test_boundary_numbers_shift_with_boundaries_between(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    model.create_layer(level(model, 3.0), "Sand", 0, 0)
    assert [layer["boundary_top"] for layer in model._serialize_layers()] == [1, 2]
    model._create_boundary(level(model, 2.0))
    assert [layer["boundary_top"] for layer in model._serialize_layers()] == [1, 3]
    model._create_boundary(level(model, -1.0))
    assert [layer["boundary_bottom"] for layer in model._serialize_layers()] == [1, 2]
    assert [layer["boundary_top"] for layer in model._serialize_layers()] == [2, 4]


def test_codes_and_what_passed_unexamined_come_out_as_they_are(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    for y, code in enumerate([0, 99, False, 99.0, None, "99"]):
        model.create_layer(level(model, y + 1.0), "Sand", code, 0)
    assert repr([layer["pl_top"] for layer in model._serialize_layers()]) == repr(
        [0, 99, False, 99.0, None, "99"]
    )


def test_the_99th_pl_line_has_the_number_of_the_code(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    lines = [model.create_pl_line(level(model, float(y))) for y in range(1, 101)]
    model.create_layer(level(model, 1.0), "Sand", lines[98], lines[99])
    layer = model._serialize_layers()[0]
    assert (layer["pl_top"], layer["pl_bottom"]) == (99, 100)


def test_a_pl_line_along_a_boundary_refers_to_its_curve(
    new_model_2d: Factory, level: Factory
) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    model.create_pl_line(level(model, 1.0))
    assert model._serialize_curves() == [(1, 2), (3, 4), (3, 4)]
    assert model._serialize_boundaries() == [[1], [2]]
    assert model._serialize_pl_lines() == [[2]]


def test_shared_curves_keep_their_first_number_everywhere(
    new_model_2d: Factory, points_of: Factory
) -> None:
    model = new_model_2d()
    for y in (5.0, 6.0, 7.0):
        model._create_boundary(points_of(model, (0, 1), (20, 1), (50, y), (80, 1), (100, 1)))
    model.create_pl_line(points_of(model, (0, 1), (20, 1), (50, 8), (80, 1), (100, 1)))
    assert model._serialize_boundaries() == [[1], [2, 3, 4, 5], [2, 7, 8, 5], [2, 11, 12, 5]]
    assert model._serialize_pl_lines() == [[2, 15, 16, 5]]


def test_a_layer_may_carry_a_boundary_by_number(new_model_2d: Factory) -> None:
    model = new_model_2d()
    number: Any = True
    model._layers.append(_Layer(number, model._boundaries[0], "Sand", 0, 0))
    layer = model._serialize_layers()[0]
    assert layer["boundary_top"] is True
    assert layer["boundary_bottom"] == 0
    assert list(layer) == ["material", "boundary_top", "boundary_bottom", "pl_top", "pl_bottom"]


def test_a_pl_line_of_another_model_is_known_by_its_curves_alone(
    new_model_2d: Factory, level: Factory
) -> None:
    model, other = new_model_2d(), new_model_2d()
    known = other.create_pl_line(level(other, 1.0))
    unknown = other.create_pl_line(level(other, 2.0))
    model.create_pl_line(level(model, 5.0))
    model.create_pl_line(level(model, 1.0))
    model.create_layer(level(model, 1.0), "Sand", known, 0)
    assert model._serialize_layers()[0]["pl_top"] == 2
    model.create_layer(level(model, 2.0), "Sand", unknown, 0)
    with pytest.raises(ValueError, match=r"^<.*_PlLine object at 0x\w+> is not in list$"):
        model._serialize_layers()


def test_a_boundary_that_is_gone_is_not_found(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    del model._boundaries[1]
    with pytest.raises(ValueError, match=r"^<.*_Boundary object at 0x\w+> is not in list$"):
        model._serialize_layers()


def test_points_of_another_model_need_an_equal_one(new_model_2d: Factory, level: Factory) -> None:
    model, other = new_model_2d(), new_model_2d()
    model.create_layer(level(other, 1.0), "Sand", 0, 0)
    with pytest.raises(ValueError, match=r"^_Point\(0\.0, 1\.0\) is not in list$"):
        model._serialize()
    level(model, 1)
    assert model._serialize_curves() == [(1, 2), (3, 4)]


def test_twins_are_numbered_as_the_first(new_model_2d: Factory) -> None:
    model = new_model_2d()
    model._boundaries += copy.deepcopy(model._boundaries)
    model._pl_lines += [_PlLine(model._boundaries[0].curves) for _ in range(2)]
    model._layers.append(
        _Layer(model._boundaries[1], model._boundaries[0], "", *reversed(model._pl_lines))
    )
    assert model._serialize_boundaries() == [[1], [1]]
    assert model._serialize_pl_lines() == [[1], [1]]
    layer = model._serialize_layers()[0]
    assert list(layer.values()) == ["", 0, 0, 1, 1]


def test_lists_may_be_of_any_kind_with_an_index(new_model_2d: Factory, level: Factory) -> None:
    model = new_model_2d()
    model.create_layer(level(model, 1.0), "Sand", 0, 0)
    document = model._serialize()
    model._points = tuple(model._points)
    model._boundaries = tuple(model._boundaries)
    assert model._serialize() == document


def test_builders_and_properties_run_through_the_objects(
    new_model_2d: Factory, level: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    class Careful(Model2D):
        def _serialize_points(self) -> Any:
            return ["own"]

    model = new_model_2d(Careful)
    assert model._serialize()["points"] == ["own"]
    monkeypatch.setattr(_Boundary, "curves", property(lambda self: []))
    assert model._serialize()["curves"] == []
    assert model._serialize()["boundaries"] == [[]]
    monkeypatch.undo()
    monkeypatch.setattr(_Point, "x", property(lambda self: 7))
    assert new_model_2d(limits=(7, 7))._serialize_points() == [(7, 0.0, 0), (7, 0.0, 0)]


def test_a_layer_of_another_class_is_asked(new_model_2d: Factory, level: Factory) -> None:
    class Renamed(_Layer):
        @property
        def material(self) -> str:
            top: Any = self.boundary_top
            top._curves.reverse()
            return "own"

    model = new_model_2d()
    first = model.create_layer(level(model, 1.0), "Sand", 0, 0)
    layer = Renamed(first.boundary_top, first.boundary_bottom, "Sand", 0, 0)
    model._layers[:] = [layer, layer]
    assert [entry["material"] for entry in model._serialize_layers()] == ["own", "own"]
