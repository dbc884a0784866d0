"""`inspect.signature` and the other things that an operation tells of itself."""

import functools
import inspect
import types
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.external.dsettlement import Metadata, Model1D, _Model, _Vertical

from tests.host.conftest import OPERATIONS, SIGNATURES

ENUMERATIONS = {"CalculationModel", "ConsolidationModel", "DrainGrid", "DrainType"}


def described(signature: inspect.Signature) -> list[tuple[str, Any, str]]:
    """Names, kinds and defaults; a default by its text, so that 0, 0.0 and False differ."""
    return [(p.name, p.kind, repr(p.default)) for p in signature.parameters.values()]


def test_what_is_said_of_operations_is_said_of_those_that_exist() -> None:
    assert set(SIGNATURES) <= set(OPERATIONS)
    assert {path.split(".")[0] for path in OPERATIONS} >= set(dsettlement.__all__) - ENUMERATIONS


def test_the_signature_is_that_of_an_operation_written_in_python(
    operation: Any, counterpart: Any
) -> None:
    assert described(inspect.signature(operation)) == described(inspect.signature(counterpart))


def test_the_signature_of_a_bound_operation_leaves_out_the_object(
    path: str, operation: Any, counterpart: Any
) -> None:
    bound = types.MethodType(operation, object())
    python = types.MethodType(counterpart, object())
    assert described(inspect.signature(bound)) == described(inspect.signature(python))


def test_the_signature_of_a_class_is_that_of_its_constructor(
    constructor: str, make_counterpart: Any
) -> None:
    python = make_counterpart(f"{constructor}.__init__")
    cls = getattr(dsettlement, constructor)
    assert described(inspect.signature(cls)) == described(inspect.signature(python))


def test_a_subclass_that_adds_nothing_has_the_same_signature() -> None:
    class Model(Model1D):
        pass

    assert inspect.signature(Model) == inspect.signature(Model1D)
    assert inspect.signature(Model.create_material) == inspect.signature(_Model.create_material)


def test_arguments_can_be_bound_before_the_call() -> None:
    bound = inspect.signature(Model1D.update_geometry).bind("self", -1.0, layers=[])
    bound.apply_defaults()
    assert bound.arguments == {
        "self": "self",
        "bottom_level": -1.0,
        "layers": [],
        "phreatic_level": None,
    }


def test_an_operation_knows_its_names(path: str, operation: Any) -> None:
    assert operation.__name__ == path.split(".")[1]
    assert operation.__qualname__ == path
    assert operation.__module__ == "sembra.external.dsettlement"
    assert path in repr(operation)


def test_an_operation_is_a_routine_to_every_tool(operation: Any) -> None:
    assert callable(operation)
    assert inspect.isroutine(operation)


def test_an_operation_becomes_a_bound_method_on_an_object() -> None:
    vertical = _Vertical(1.0)
    bound: Any = vertical._serialize
    assert type(bound) is types.MethodType
    assert bound.__self__ is vertical
    assert bound.__func__ is _Vertical._serialize is vars(_Vertical)["_serialize"]
    assert bound() == {"x": 1.0}
    assert bound == vertical._serialize


def test_an_operation_can_be_borrowed_by_another_class() -> None:
    class Position:
        x = 5
        _x = 6
        write = _Vertical._serialize

    assert Position().write() == {"x": 6}  # type: ignore[misc]


def test_operations_are_no_types_to_make_objects_of(operation: Any) -> None:
    with pytest.raises(TypeError):
        type(operation)()


def test_an_operation_can_be_wrapped() -> None:
    wrapped: Any = Model1D.update_geometry

    @functools.wraps(wrapped)
    def wrapper(*args: Any, **kwargs: Any) -> Any:
        return wrapped(*args, **kwargs)

    assert wrapper.__name__ == "update_geometry"
    assert wrapper.__qualname__ == "Model1D.update_geometry"
    assert wrapper.__doc__ == Model1D.update_geometry.__doc__
    assert inspect.signature(wrapper) == inspect.signature(Model1D.update_geometry)


@pytest.mark.parametrize(
    ("owner", "name"),
    [
        *[("_Model", name) for name in ("materials", "verticals")],
        *[("Model1D", name) for name in ("bottom_level", "top_level", "layers", "phreatic_level")],
        ("_Vertical", "x"),
        ("_Material", "color"),
        ("VerticalDrain", "position_drain"),
        *[("_Geometry1D", name) for name in ("bottom_level", "top_level", "layers")],
    ],
)
def test_a_property_is_a_property(owner: str, name: str) -> None:
    declared = vars(getattr(dsettlement, owner))[name]
    assert type(declared) is property
    assert (declared.fset, declared.fdel) == (None, None)
    getter: Any = declared.fget
    assert (getter.__name__, getter.__qualname__) == (name, f"{owner}.{name}")


def test_partial_application_works_by_position_and_by_keyword() -> None:
    make = functools.partial(Metadata, "file", title_3="third")
    assert make("company")._serialize()["title_3"] == "third"
    assert make("company")._serialize()["company"] == "company"
