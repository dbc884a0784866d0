"""Constructors and extended operations go on along the method resolution order."""

from collections.abc import Callable
from io import BytesIO
from typing import Any

import pytest
from sembra.external.dsettlement import (
    DSettlementAnalysis,
    Model1D,
    _Model,
    _OtherLoad,
    _UniformLoad,
)
from sembra.external.external_program import ExternalProgram

Factory = Callable[..., Any]


class Audited(_Model):
    """A class that stands between `Model1D` and the frame."""

    def __init__(self, *args: Any, **options: Any) -> None:
        self.steps = ["init"]
        super().__init__(*args, **options)

    def _serialize(self) -> dict[str, Any]:
        return {**super()._serialize(), "audited": True}

    def _validate(self) -> None:
        self.steps.append("validate")
        super()._validate()


class AuditedModel(Model1D, Audited):
    """A one-dimensional model that is audited."""


def test_a_constructor_without_an_object_is_refused() -> None:
    message = r"^super\(type, obj\): obj must be an instance or subtype of type$"
    with pytest.raises(TypeError, match=message):
        _UniformLoad.__init__(None, 0, 18.0, 1.0, 0.0)  # type: ignore[arg-type]


def test_the_constructor_reaches_a_class_between_model_and_frame(new_model_1d: Factory) -> None:
    assert AuditedModel.__mro__[1:4] == (Model1D, Audited, _Model)
    model = new_model_1d(AuditedModel)
    assert model.steps == ["init"]
    assert next(iter(vars(model))) == "steps"
    assert model.bottom_level == -10.0


def test_the_document_goes_through_a_class_between_model_and_frame(
    new_model_1d: Factory, new_frame: Factory
) -> None:
    document = new_model_1d(AuditedModel)._serialize()
    assert list(document) == [*new_frame()._serialize(), "audited", "model_type", "geometry"]


def test_the_check_is_found_on_a_class_between_model_and_frame(new_model_1d: Factory) -> None:
    model = new_model_1d(AuditedModel)
    model._generate_input()
    assert model.steps == ["init", "validate"]


def test_a_mixin_in_front_gets_the_options_it_asks_for(new_model_1d: Factory) -> None:
    class Named:
        def __init__(self, *args: Any, label: str, **options: Any) -> None:
            self.label = label
            super().__init__(*args, **options)

    class NamedModel(Named, Model1D):
        pass

    model = new_model_1d(NamedModel, label="A12", maintain_profile=True)
    assert (model.label, model._maintain_profile) == ("A12", True)


def test_a_uniform_load_calls_the_next_constructor_without_arguments() -> None:
    class Numbered(_OtherLoad):
        def __init__(self, *args: Any, **options: Any) -> None:
            assert (args, options) == ((), {})
            assert vars(self) == {}
            self.number = 7
            super().__init__()

    class NumberedLoad(_UniformLoad, Numbered):
        pass

    load = NumberedLoad(1, 2.0, 3.0, 4.0)
    assert list(vars(load)) == ["number", "time", "unit_weight", "height", "y_application"]


def test_an_analysis_reaches_a_class_between_itself_and_the_external_program() -> None:
    class Timed(ExternalProgram):
        def __init__(self, *args: Any, **options: Any) -> None:
            self.made_with = (args, options)
            super().__init__(*args, **options)

    class TimedAnalysis(DSettlementAnalysis, Timed):
        pass

    analysis = TimedAnalysis(BytesIO())
    assert analysis.made_with == (("dsettlement",), {"version": 1})
