"""Wrong calls are refused in the words that Python has for an operation written in Python."""

import inspect
from collections.abc import Callable, Iterator
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.external.dsettlement import CalculationModel, ConsolidationModel, Metadata, Model1D

Call = tuple[tuple[Any, ...], dict[Any, Any]]


def refusal(operation: Any, call: Call) -> str:
    """The text with which a call is refused."""
    args, kwargs = call
    with pytest.raises(TypeError) as refused:
        operation(*args, **kwargs)
    assert type(refused.value) is TypeError
    return str(refused.value)


def wrong_calls(python: Callable[..., Any]) -> Iterator[Call]:
    """Calls that do not fit the signature of an operation."""
    parameters = list(inspect.signature(python).parameters.values())
    of_kind = {
        kind: [parameter for parameter in parameters if parameter.kind is kind]
        for kind in inspect._ParameterKind
    }
    places = of_kind[inspect.Parameter.POSITIONAL_OR_KEYWORD]
    required = [place.name for place in places if place.default is place.empty]
    takes_any_number = bool(of_kind[inspect.Parameter.VAR_POSITIONAL])
    takes_any_keyword = bool(of_kind[inspect.Parameter.VAR_KEYWORD])
    options = [option.name for option in of_kind[inspect.Parameter.KEYWORD_ONLY]]
    enough = (None,) * len(required)

    for given in range(len(required)):
        yield (None,) * given, {}
    for left_out in required[1:]:
        yield (None,), dict.fromkeys(name for name in required[1:] if name != left_out)
    if not takes_any_number:
        for excess in (1, 3):
            positional = (None,) * (len(places) + excess)
            yield positional, {}
            if options:
                yield positional, {options[0]: None}
                yield positional, dict.fromkeys(options[:3])
            if not takes_any_keyword:
                yield positional, {"unknown": None}
            yield positional, {places[-1].name: None}
    if not takes_any_keyword:
        yield enough, {"unknown": None}
        yield enough, {"unknown": None, "other": None}
        yield enough, {"": None}
        yield enough, {"ünknown 'x'": None}
        yield (), {"unknown": None}
        yield (), dict.fromkeys([*required, "unknown"])
    for name in required:
        yield enough, {name: None}
    if len(places) > len(required):
        yield (None,) * len(places), {places[-1].name: None}
    yield enough, {1: 2}
    yield enough, {None: 2}
    yield (), {(): 2}


def test_the_words_are_those_of_python(path: str, operation: Any, counterpart: Any) -> None:
    calls = list(wrong_calls(counterpart))
    assert len(calls) >= 5
    for call in calls:
        assert refusal(operation, call) == refusal(counterpart, call), call


def test_the_words_are_those_of_python_when_an_object_is_made(
    constructor: str, make_counterpart: Any
) -> None:
    python: Any = make_counterpart(f"{constructor}.__init__")
    cls = getattr(dsettlement, constructor)
    for args, kwargs in wrong_calls(python.__init__):
        if not args or "self" in kwargs:
            continue
        assert refusal(cls, (args[1:], kwargs)) == refusal(python, (args[1:], kwargs))


@pytest.mark.parametrize("call", [((), {}), ((1, 2, 3, 4), {}), ((1, 2), {"self": 3})])
def test_the_words_are_those_of_python_on_a_bound_operation(
    call: Call, new_model_1d: Callable[..., Any], make_counterpart: Any
) -> None:
    python = make_counterpart("Model1D.update_geometry")()
    bound = new_model_1d().update_geometry
    assert refusal(bound, call) == refusal(python.update_geometry, call)


def test_a_subclass_is_refused_in_the_name_of_the_class_that_declares_the_operation() -> None:
    class Model(Model1D):
        pass

    make: Any = Model
    message = (
        r"^Model1D\.__init__\(\) missing 2 required positional arguments: "
        "'calculation_model' and 'consolidation_model'$"
    )
    with pytest.raises(TypeError, match=message):
        make()
    message = r"^_Model\.create_material\(\) missing 1 required positional argument: 'gam_wet'$"
    with pytest.raises(TypeError, match=message):
        make(CalculationModel.ISOTACHE, ConsolidationModel.DARCY).create_material("a", 1.0)


def test_a_refused_call_has_done_nothing(new_model_1d: Callable[..., Any]) -> None:
    model = new_model_1d()
    before = {name: repr(value) for name, value in vars(model).items()}
    wrong_ones: list[Callable[[], Any]] = [
        lambda: model.update_geometry(-1.0, [(1.0, "Loam")], None, None),
        lambda: model.create_material("a", 1.0, 2.0, unknown=3),
        lambda: model.create_uniform_load("a", 1, 2, 3, 4, 5),
        lambda: model.set_calculation_times(1, time=2),
    ]
    for wrong in wrong_ones:
        with pytest.raises(TypeError):
            wrong()
    assert {name: repr(value) for name, value in vars(model).items()} == before


def test_keywords_match_by_their_text_and_not_by_the_object(
    new_model_1d: Callable[..., Any],
) -> None:
    class Text(str):
        pass

    model = new_model_1d()
    parts = {"".join(["gam", "_dry"]): 1.0, Text("gam_wet"): 2.0, "".join(["co", "hesion"]): 3.0}
    model.create_material("a", **parts)
    material = model.materials["a"]
    assert (material.gam_dry, material.gam_wet, material._kwargs["cohesion"]) == (1.0, 2.0, 3.0)


def test_keywords_that_are_not_ascii_are_compared_as_text(make_counterpart: Any) -> None:
    call: Call = ((), {"file_nаme": "with a Cyrillic letter"})  # noqa: RUF001
    counterpart = make_counterpart("Metadata.__init__")
    assert refusal(Metadata, call) == refusal(counterpart, call)


def test_the_object_itself_may_be_given_by_keyword(new_model_1d: Callable[..., Any]) -> None:
    model = new_model_1d()
    update: Any = Model1D.update_geometry
    update(layers=[(1.0, "Loam")], self=model, bottom_level=-1)
    assert model.bottom_level == -1


def test_a_further_parameter_of_a_material_may_have_any_name_that_is_not_taken() -> None:
    further: dict[str, Any] = {"": 1, "a b": 2, "kwargs": 3, "name": 4}
    material: Any = dsettlement._Material(1.0, 2.0, **further)
    assert material._kwargs == further
