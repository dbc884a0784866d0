"""Objects are copied and pickled like those of any class."""

import copy
import enum
import pickle
from collections.abc import Callable
from io import BytesIO
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    DSettlementAnalysis,
    Metadata,
    Model1D,
    _Geometry1D,
    _Material,
    _UniformLoad,
    _Vertical,
)

Factory = Callable[..., Any]

PROTOCOLS = range(pickle.HIGHEST_PROTOCOL + 1)
ENUMERATIONS = [CalculationModel, ConsolidationModel, DrainType, DrainGrid]
RECORDS = [
    _Vertical(1.0),
    _Geometry1D(-1, [(1.0, "Loam")], 0.5),
    _UniformLoad(1, 2.0, 3.0, 4.0),
    DrainageSimpleMode(1.0, 2.0, 3.0, 4.0),
    Metadata("file", title_3="third", write_date=True),
]
SCHEDULES = [
    None,
    DrainageSimpleMode(1.0, 2.0, 3.0, 4.0),
    [(0.0, 35.0, 1.0), (10.0, 0.0, -2.0)],
]


class OwnModel(Model1D):
    """A model of the application's own."""

    note = "class"


def copies(thing: Any) -> list[Any]:
    """The thing through every kind of deep copy."""
    pickled = [pickle.loads(pickle.dumps(thing, protocol)) for protocol in PROTOCOLS]
    return [copy.deepcopy(thing), *pickled]


@pytest.mark.parametrize("schedule", SCHEDULES)
@pytest.mark.parametrize("cls", [Model1D, OwnModel])
def test_a_built_model_writes_the_same_document_afterwards(
    cls: Any, schedule: Any, build_story: Factory, new_strip_drain: Factory
) -> None:
    drain = new_strip_drain(bottom_position=-0.5, schedule=schedule)
    model = build_story(cls, vertical_drain=drain)
    model.note = "object"
    document = model._generate_input()
    for other in copies(model):
        assert type(other) is cls
        assert other.note == "object"
        assert list(vars(other)) == list(vars(model))
        assert other._generate_input() == document
        assert list(other._generate_input()) == list(document)


def test_a_deep_copy_shares_nothing_that_can_change(build_story: Factory) -> None:
    model = build_story()
    document = copy.deepcopy(model._generate_input())
    for other in copies(model):
        other.create_material("more", 1.0, 2.0)
        other.create_uniform_load("more", 0, 1.0, 1.0, 0.0)
        other.set_calculation_times(9)
        other._geometry._layers.append((-0.5, "more"))
        other._verticals.append(_Vertical(2.0))
        other._vertical_drain.range_to = 1.0
    assert model._generate_input() == document


def test_a_copied_model_can_be_used_further(build_story: Factory, post: Any) -> None:
    for other in copies(build_story()):
        other.update_geometry(-2.0, [(0.0, "my_mat")])
        other.generate_input_file()
        assert post.document["geometry"]["bottom_level"] == -2.0


def test_a_shallow_copy_shares_its_containers(build_story: Factory) -> None:
    model = build_story()
    other = copy.copy(model)
    assert type(other) is Model1D
    assert other is not model
    assert all(vars(other)[name] is value for name, value in vars(model).items())
    other.create_material("more", 1.0, 2.0)
    assert "more" in model.materials
    other.set_calculation_times(9)
    assert model._calculation_times == [1, 4, 2, 5]


@pytest.mark.parametrize("record", RECORDS)
def test_a_record_is_copied_with_all_its_fields(record: Any) -> None:
    for other in [*copies(record), copy.copy(record)]:
        assert type(other) is type(record)
        assert other is not record
        assert list(vars(other).items()) == list(vars(record).items())


def test_a_material_is_copied_with_its_color(new_frame: Factory) -> None:
    material = _Material(1.0, 2.0, Color.from_deltares(42495), phi=30.0)
    for other in copies(material):
        assert other._serialize("a") == material._serialize("a")


@pytest.mark.parametrize("schedule", SCHEDULES)
def test_a_drain_is_copied_with_its_schedule(schedule: Any, new_strip_drain: Factory) -> None:
    drain = new_strip_drain(schedule=schedule)
    for other in copies(drain):
        assert other._serialize() == drain._serialize()
        assert other._drain_type is DrainType.STRIP


@pytest.mark.parametrize("enumeration", ENUMERATIONS)
def test_a_member_stays_itself(enumeration: type[enum.Enum]) -> None:
    for member in enumeration:
        assert all(other is member for other in [*copies(member), copy.copy(member)])


@pytest.mark.parametrize("name", [*dsettlement.__all__, "_Model", "_Material", "_Vertical"])
def test_a_class_stays_itself(name: str) -> None:
    cls = getattr(dsettlement, name)
    assert all(other is cls for other in copies(cls))


def test_an_operation_stays_itself(operation: Any, path: str) -> None:
    assert copy.deepcopy(operation) is operation
    assert copy.copy(operation) is operation
    owner, name = path.split(".")
    if getattr(getattr(dsettlement, owner), name) is not operation:
        return  # behind a property or a class method, where no pickle finds a function
    assert all(pickle.loads(pickle.dumps(operation, p)) is operation for p in PROTOCOLS)


def test_a_bound_operation_takes_its_object_along(build_story: Factory) -> None:
    model = build_story()
    for protocol in PROTOCOLS:
        other = pickle.loads(pickle.dumps(model._generate_input, protocol))
        assert other() == model._generate_input()
        assert other.__self__ is not model


def test_an_analysis_that_has_not_run_is_copied_with_its_input_file() -> None:
    analysis = DSettlementAnalysis(BytesIO(b"abc"))
    pickled = [pickle.loads(pickle.dumps(analysis, p)) for p in PROTOCOLS if p >= 2]
    for other in [copy.deepcopy(analysis), *pickled]:
        assert other._generate_job_content().body == "YWJj"


def test_a_class_may_say_itself_how_it_is_pickled() -> None:
    for other in copies(Exact(3.0)):
        assert type(other) is Exact
        assert other.x == 3.0
        assert other.made_again


class Exact(_Vertical):
    """A vertical that is made again from its position."""

    made_again = False

    def __reduce__(self) -> Any:
        return make_exact, (self.x,)


def make_exact(x: float) -> Exact:
    """Make the vertical again."""
    vertical = Exact(x)
    vertical.made_again = True
    return vertical
