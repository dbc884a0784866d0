"""Objects go when nobody holds them any more, and nothing is left behind."""

import gc
import sys
import weakref
from collections.abc import Callable
from io import BytesIO
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.core import Color
from sembra.errors import ModelError
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DSettlementAnalysis,
    Metadata,
    Model1D,
    Model2D,
    _Geometry1D,
    _Material,
    _Model,
    _UniformLoad,
    _Vertical,
)

Factory = Callable[..., Any]

ROUNDS = 100


@pytest.fixture(autouse=True, scope="module")
def _little_to_collect() -> None:
    """Spare each of some thousand collections what other tests have imported."""
    gc.collect()
    gc.freeze()


def refused(operation: Callable[..., Any], *args: Any, **options: Any) -> None:
    """Call an operation that refuses."""
    with pytest.raises((ModelError, TypeError, KeyError, AttributeError)):
        operation(*args, **options)


def make_model() -> Model1D:
    """Make a model."""
    return Model1D(CalculationModel.ISOTACHE, ConsolidationModel.DARCY)


def make_model_of_a_new_class() -> None:
    class Model(Model1D):
        def _serialize(self) -> dict[str, Any]:
            return super()._serialize()

    Model(CalculationModel.ISOTACHE, ConsolidationModel.DARCY)._generate_input()


def make_ring() -> None:
    """Make a model that holds itself."""
    model: Any = make_model()
    model.itself = model
    model.operation = model.create_material


def use_analysis() -> None:
    """Make an analysis and what it sends."""
    DSettlementAnalysis(BytesIO(b"abc"))._generate_job_content()


MODEL = make_model()
MATERIAL = _Material(1.0, 2.0, Color(0, 0, 0), phi=30.0)
GEOMETRY = _Geometry1D(-1.0, [(1.0, "Loam")])
DRAIN = _Model._DEFAULT_VERTICAL_DRAIN
NUMBERED: dict[Any, Any] = {1: 2}

ACTIONS: dict[str, Callable[[], Any]] = {
    "make a model": make_model,
    "make a model of a new class": make_model_of_a_new_class,
    "make a model that holds itself": make_ring,
    "write a document": lambda: MODEL._generate_input(Metadata("a"), _Vertical(1.0)),
    "read properties": lambda: (MODEL.materials, MODEL.verticals, MODEL.layers, MODEL.top_level),
    "change the geometry": lambda: MODEL.update_geometry(-1.0, [(1.0, "Loam")], phreatic_level=0.5),
    "set times": lambda: MODEL.set_calculation_times(1, 2, 3),
    "make a material": lambda: _Material(1.0, 2.0, phi=30.0),
    "write a material": lambda: MATERIAL._serialize("a"),
    "make a load": lambda: _UniformLoad(1, 2.0, y_application=3.0, height=4.0)._serialize("a"),
    "make and write metadata": lambda: Metadata(write_date=True, write_time=True)._serialize(),
    "write a column": lambda: GEOMETRY._serialize(),
    "write a drain": lambda: DRAIN._serialize(),
    "make an analysis": use_analysis,
    "refuse a duplicate": lambda: refused(MODEL.create_material, "Sand", 1.0, 2.0),
    "refuse a keyword": lambda: refused(MODEL.create_material, "a", 1.0, 2.0, unknown=1),
    "refuse a call without arguments": lambda: refused(Model1D),
    "refuse too many arguments": lambda: refused(_Vertical, 1, 2, 3),
    "refuse a second value": lambda: refused(_Vertical, 1.0, x=2.0),
    "refuse a keyword that is no text": lambda: refused(lambda: _Vertical(1.0, **NUMBERED)),
    "refuse an option": lambda: refused(
        Model1D, CalculationModel.ISOTACHE, None, verticals_discretization=4
    ),
    "refuse a model": lambda: refused(Model1D, "ISOTACHE", None),
    "refuse a geometry": lambda: refused(MODEL.update_geometry, -1.0, [(1.0, "Loam"), (2.0, "x")]),
    "refuse times": lambda: refused(MODEL.set_calculation_times, 1, -1),
    "refuse a title": lambda: refused(Metadata, title_2="x" * 51),
    "refuse an abstract class": lambda: refused(_Model),
    "read a signature": lambda: getattr(Model1D.create_material, "__text_signature__", None),
}


@pytest.fixture(autouse=True)
def without_the_service(post: Any) -> None:
    """No request leaves the process."""


@pytest.mark.parametrize("action", ACTIONS)
def test_memory_does_not_grow(action: str) -> None:
    act = ACTIONS[action]

    def blocks_after(rounds: int) -> int:
        for _ in range(rounds):
            act()
        gc.collect()
        return sys.getallocatedblocks()

    blocks_after(ROUNDS)
    before = blocks_after(ROUNDS)
    assert blocks_after(ROUNDS) - before < ROUNDS // 4


@pytest.mark.implementation
@pytest.mark.parametrize("action", ACTIONS)
def test_what_is_used_is_given_back(action: str) -> None:
    classes = [value for value in vars(dsettlement).values() if isinstance(value, type)]
    operations = [vars(_Model)["create_material"], vars(Model1D)["__init__"]]
    watched = [*classes, *operations, *CalculationModel, *ConsolidationModel, MODEL, DRAIN]
    act = ACTIONS[action]

    def counts_after(rounds: int) -> list[int]:
        for _ in range(rounds):
            act()
        gc.collect()
        return [sys.getrefcount(thing) for thing in watched]

    before = counts_after(2)
    after = counts_after(20)
    grown = [thing for thing, a, b in zip(watched, before, after, strict=True) if abs(a - b) >= 10]
    assert grown == []


@pytest.mark.implementation
def test_values_that_are_passed_through_are_given_back(soil_parameters: dict[str, Any]) -> None:
    value = object()
    before = sys.getrefcount(value)
    model: Any = make_model()
    model.create_material("a", value, value, **dict.fromkeys(soil_parameters, value))
    model.create_uniform_load("a", value, value, value, value)
    model._generate_input(Metadata(value, value), _Vertical(value))  # type: ignore[arg-type]
    assert sys.getrefcount(value) > before + 100
    del model
    gc.collect()
    assert sys.getrefcount(value) == before


def test_every_kind_of_object_can_be_referred_to_weakly(
    build_story: Factory, new_strip_drain: Factory
) -> None:
    things: list[Any] = [
        build_story(),
        new_strip_drain(),
        DrainageSimpleMode(1.0, 2.0, 3.0, 4.0),
        Metadata(),
        DSettlementAnalysis(BytesIO()),
        _Vertical(1.0),
        _Material(1.0, 2.0),
        _UniformLoad(1, 2.0, 3.0, 4.0),
        _Geometry1D(-1.0, [(1.0, "Loam")]),
    ]
    references = [weakref.ref(thing) for thing in things]
    assert [reference() for reference in references] == things
    things.clear()
    gc.collect()
    assert [reference() for reference in references] == [None] * len(references)


def test_an_object_without_rings_goes_at_once() -> None:
    gc.disable()
    try:
        model = make_model()
        reference = weakref.ref(model)
        del model
        assert reference() is None
    finally:
        gc.enable()


def test_rings_are_found_by_the_garbage_collector() -> None:
    model: Any = make_model()
    model.itself = [model, model.create_material, {"model": model}]
    model.materials["Sand"].model = model
    reference = weakref.ref(model)
    del model
    gc.collect()
    assert reference() is None


@pytest.mark.implementation
def test_the_collector_finds_who_holds_an_object() -> None:
    model = Model2D(
        CalculationModel.ISOTACHE, ConsolidationModel.DARCY, [(0.0, -5.0), (100.0, -5.0)]
    )
    model.create_layer([model.create_point(x, 0.0) for x in (0.0, 100.0)], "Sand", 99, 0)
    model.create_vertical(50.0)
    operation, watched = vars(Model2D)["create_layer"], vars(Model2D)["_boundaries"]
    (index,) = (held for held in gc.get_referents(model) if type(held).__name__ == "_box")
    gc.unfreeze()
    for holder in (operation, watched, index, dsettlement):
        held = gc.get_referents(holder)
        assert len(held) > 1
        for each in held:
            assert any(found is holder for found in gc.get_referrers(each)), (holder, each)


def test_a_subclass_goes_when_nobody_holds_it() -> None:
    class Model(Model1D):
        def _validate(self) -> None:
            super()._validate()

    model = Model(CalculationModel.ISOTACHE, ConsolidationModel.DARCY)
    model._generate_input()
    reference = weakref.ref(Model)
    del Model, model
    gc.collect()
    assert reference() is None
    assert reference not in Model1D.__subclasses__()


def test_operations_can_be_referred_to_weakly(operation: Any) -> None:
    assert weakref.ref(operation)() is operation


def test_a_finaliser_runs() -> None:
    finished: list[str] = []

    class Model(Model1D):
        def __del__(self) -> None:
            finished.append("gone")

    Model(CalculationModel.ISOTACHE, ConsolidationModel.DARCY)
    gc.collect()
    assert finished == ["gone"]


def test_a_failed_construction_leaves_nothing_behind() -> None:
    made: list[Any] = []

    class Model(Model1D):
        def __init__(self, *args: Any, **options: Any) -> None:
            made.append(weakref.ref(self))
            super().__init__(*args, **options)

    with pytest.raises(ModelError):
        Model(CalculationModel.ISOTACHE, ConsolidationModel.DARCY, verticals_discretization=4)
    gc.collect()
    assert [reference() for reference in made] == [None]
