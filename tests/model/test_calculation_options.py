"""The constructor of `_Model`: what is stored, in which order, and the range checks."""

from collections import OrderedDict
from collections.abc import Callable
from decimal import Decimal
from fractions import Fraction
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import CalculationModel, ConsolidationModel, Model1D, _Model

Factory = Callable[..., Any]

DISCRETIZATION = "verticals_discretization must be between 5 and 500"
PROFILE_TIME = "profile_time must be between 0 and 100000 and <= end_of_settlement_calculation"
STORED_BEFORE_DISCRETIZATION = [
    "_calculation_model",
    "_consolidation_model",
    "_natural_strain",
    "_reliability_analysis",
    "_fit_for_settlement_plate",
    "_horizontal_displacements",
    "_limits",
    "_water_unit_weight",
]
STORED_BEFORE_PROFILE_TIME = [
    *STORED_BEFORE_DISCRETIZATION,
    "_verticals_discretization",
    "_verticals_z_coordinate",
    "_maintain_profile",
]
STORED = [
    *STORED_BEFORE_PROFILE_TIME,
    "_profile_time",
    "_profile_unit_weight_above_phreatic_level",
    "_profile_unit_weight_below_phreatic_level",
    "_end_of_settlement_calculation",
    "_stress_distribution_loads",
    "_has_vertical_drains",
    "_vertical_drain",
    "_materials",
    "_verticals",
    "_non_uniform_loads",
    "_other_loads",
    "_calculation_times",
]
UNCHECKED = [
    "reliability_analysis",
    "fit_for_settlement_plate",
    "horizontal_displacements",
    "limits",
    "water_unit_weight",
    "verticals_z_coordinate",
    "maintain_profile",
    "profile_unit_weight_above_phreatic_level",
    "profile_unit_weight_below_phreatic_level",
    "stress_distribution_loads",
    "vertical_drain",
]


def stored_until_refused(
    frame_class: type[_Model], failure: type[Exception], **options: Any
) -> tuple[list[str], str]:
    """The names that a refused construction has stored, and the text of the refusal."""
    options = {
        "calculation_model": CalculationModel.ISOTACHE,
        "consolidation_model": ConsolidationModel.DARCY,
    } | options
    unmade: Any = frame_class.__new__(frame_class)
    with pytest.raises(failure) as refused:
        unmade.__init__(**options)
    assert type(refused.value) is failure
    return list(vars(unmade)), str(refused.value)


def test_attributes_are_stored_in_order(new_frame: Factory) -> None:
    assert list(vars(new_frame())) == STORED


def test_defaults_are_stored(new_frame: Factory) -> None:
    model = new_frame()
    assert vars(model) == {
        "_calculation_model": CalculationModel.NEN_KOPPEJAN,
        "_consolidation_model": ConsolidationModel.TERZAGHI,
        "_natural_strain": False,
        "_reliability_analysis": False,
        "_fit_for_settlement_plate": False,
        "_horizontal_displacements": False,
        "_limits": (0.0, 100.0),
        "_water_unit_weight": 9.81,
        "_verticals_discretization": 100,
        "_verticals_z_coordinate": 0.0,
        "_maintain_profile": False,
        "_profile_time": 0,
        "_profile_unit_weight_above_phreatic_level": 10.0,
        "_profile_unit_weight_below_phreatic_level": 10.0,
        "_end_of_settlement_calculation": 10000,
        "_stress_distribution_loads": False,
        "_has_vertical_drains": False,
        "_vertical_drain": _Model._DEFAULT_VERTICAL_DRAIN,
        "_materials": {},
        "_verticals": [],
        "_non_uniform_loads": OrderedDict(),
        "_other_loads": {},
        "_calculation_times": [],
    }
    assert type(model._verticals_discretization) is int
    assert type(model._profile_time) is int
    assert type(model._end_of_settlement_calculation) is int


def test_containers_are_new_for_every_model_and_of_the_plain_kinds(new_frame: Factory) -> None:
    one, other = new_frame(), new_frame()
    for name, kind in {
        "_materials": dict,
        "_verticals": list,
        "_non_uniform_loads": OrderedDict,
        "_other_loads": dict,
        "_calculation_times": list,
    }.items():
        assert type(getattr(one, name)) is kind
        assert getattr(one, name) is not getattr(other, name)


@pytest.mark.parametrize("option", UNCHECKED)
def test_unchecked_options_are_stored_as_the_very_objects(option: str, new_frame: Factory) -> None:
    value = object()
    assert getattr(new_frame(**{option: value}), f"_{option}") is value


def test_create_default_materials_is_not_stored(new_frame: Factory) -> None:
    assert "_create_default_materials" not in vars(new_frame())


def test_limits_in_the_wrong_order_are_accepted(new_frame: Factory) -> None:
    assert new_frame(limits=(100.0, 0.0))._limits == (100.0, 0.0)


@pytest.mark.parametrize("value", [5, 500, 5.5, Fraction(11, 2), Decimal(500), 250])
def test_a_discretization_from_5_to_500_is_accepted_unconverted(
    value: Any, new_frame: Factory
) -> None:
    assert new_frame(verticals_discretization=value)._verticals_discretization is value


@pytest.mark.parametrize("value", [4, 501, 4.999, 500.001, -5, True, float("nan"), float("inf")])
def test_a_discretization_outside_5_to_500_is_refused(
    value: Any, frame_class: type[_Model]
) -> None:
    stored, message = stored_until_refused(frame_class, ModelError, verticals_discretization=value)
    assert message == DISCRETIZATION
    assert stored == STORED_BEFORE_DISCRETIZATION


def test_one_dimensional_models_check_the_discretization_as_well(new_model_1d: Factory) -> None:
    with pytest.raises(ModelError, match=rf"^{DISCRETIZATION}$"):
        new_model_1d(verticals_discretization=4)


@pytest.mark.parametrize(
    ("profile_time", "end"),
    [(0, 10000), (10000, 10000), (100000, 100000), (100000, 200000), (0, 0), (0.5, 1), (0, 1e9)],
)
def test_a_profile_time_up_to_the_end_of_the_calculation_is_accepted(
    profile_time: Any, end: Any, new_frame: Factory
) -> None:
    model = new_frame(profile_time=profile_time, end_of_settlement_calculation=end)
    assert model._profile_time is profile_time
    assert model._end_of_settlement_calculation is end


@pytest.mark.parametrize(
    ("profile_time", "end"),
    [(-1, 10000), (10001, 10000), (100001, 200000), (1, 0), (0, -1), (float("nan"), 10000)],
)
def test_a_profile_time_outside_its_range_or_behind_the_end_is_refused(
    profile_time: Any, end: Any, frame_class: type[_Model]
) -> None:
    stored, message = stored_until_refused(
        frame_class, ModelError, profile_time=profile_time, end_of_settlement_calculation=end
    )
    assert message == PROFILE_TIME
    assert stored == STORED_BEFORE_PROFILE_TIME


def test_the_end_of_the_calculation_has_no_range_of_its_own(new_frame: Factory) -> None:
    assert new_frame(end_of_settlement_calculation=10**9)._end_of_settlement_calculation == 10**9
    assert new_frame(profile_time=0, end_of_settlement_calculation=0)


def test_the_discretization_is_checked_before_the_profile_time(frame_class: type[_Model]) -> None:
    _, message = stored_until_refused(
        frame_class, ModelError, verticals_discretization=4, profile_time=-1
    )
    assert message == DISCRETIZATION


@pytest.mark.parametrize("value", [0, 1, 2, "NEN_KOPPEJAN", None, ConsolidationModel.DARCY, 2.5])
def test_an_unknown_calculation_model_is_a_key_error_before_all_checks(
    value: Any, frame_class: type[_Model]
) -> None:
    stored, message = stored_until_refused(
        frame_class, KeyError, calculation_model=value, verticals_discretization=4
    )
    assert message == str(KeyError(value))
    assert stored == ["_calculation_model", "_consolidation_model"]


def test_a_calculation_model_that_does_not_hash_is_a_type_error(frame_class: type[_Model]) -> None:
    stored, message = stored_until_refused(frame_class, TypeError, calculation_model=[])
    assert message == "unhashable type: 'list'"
    assert stored == ["_calculation_model", "_consolidation_model"]


@pytest.mark.parametrize("value", [0, "TERZAGHI", None, CalculationModel.ISOTACHE])
def test_the_consolidation_model_is_not_checked(value: Any, new_frame: Factory) -> None:
    assert new_frame(consolidation_model=value)._consolidation_model is value


@pytest.mark.parametrize(
    ("options", "names"),
    [
        ({"verticals_discretization": "100"}, ("int", "str")),
        ({"verticals_discretization": None}, ("int", "NoneType")),
        ({"profile_time": "0"}, ("int", "str")),
        ({"end_of_settlement_calculation": "0"}, ("int", "str")),
        ({"end_of_settlement_calculation": None}, ("int", "NoneType")),
    ],
)
def test_a_value_that_does_not_compare_with_a_number_is_pythons_type_error(
    options: dict[str, Any], names: tuple[str, str], frame_class: type[_Model]
) -> None:
    _, message = stored_until_refused(frame_class, TypeError, **options)
    assert message == "'<=' not supported between instances of '{}' and '{}'".format(*names)


@pytest.mark.parametrize(
    ("calculation_model", "natural_strain", "strain"),
    [
        (CalculationModel.NEN_BJERRUM, True, False),
        (CalculationModel.NEN_BJERRUM, False, False),
        (CalculationModel.ISOTACHE, True, True),
        (CalculationModel.ISOTACHE, False, True),
        (CalculationModel.NEN_KOPPEJAN, True, True),
        (CalculationModel.NEN_KOPPEJAN, False, False),
    ],
)
def test_only_koppejan_listens_to_natural_strain(
    calculation_model: CalculationModel, natural_strain: bool, strain: bool, new_frame: Factory
) -> None:
    model = new_frame(calculation_model=calculation_model, natural_strain=natural_strain)
    assert model._natural_strain is strain


def test_koppejan_keeps_the_value_of_natural_strain_unconverted(new_frame: Factory) -> None:
    value = ["natural"]
    assert new_frame(natural_strain=value)._natural_strain is value


def test_the_first_three_parameters_may_be_given_by_position(frame_class: Any) -> None:
    model = frame_class(CalculationModel.ISOTACHE, ConsolidationModel.DARCY, False)
    assert model._calculation_model is CalculationModel.ISOTACHE
    assert model._consolidation_model is ConsolidationModel.DARCY
    assert model.materials == {}


@pytest.mark.parametrize(
    "option",
    [
        "limits",
        "profile_time",
        "stress_distribution_loads",
        "reliability_analysis",
        "fit_for_settlement_plate",
        "horizontal_displacements",
    ],
)
def test_one_dimensional_models_do_not_offer_what_concerns_two_dimensions(option: str) -> None:
    make: Any = Model1D
    message = rf"^Model1D\.__init__\(\) got an unexpected keyword argument '{option}'$"
    with pytest.raises(TypeError, match=message):
        make(CalculationModel.ISOTACHE, ConsolidationModel.DARCY, **{option: 0})
