"""`help()` and the documentation of operations and classes."""

import inspect
import pydoc
import re
from typing import Any

import pytest
import sembra.external.dsettlement as dsettlement
from sembra.external.dsettlement import Model1D

PUBLIC_OPERATIONS = [
    "Model1D.create_material",
    "Model1D.create_uniform_load",
    "Model1D.generate_input_file",
    "Model1D.set_calculation_times",
    "Model1D.update_geometry",
    "DSettlementAnalysis.get_output_file",
    "DSettlementAnalysis.get_sld_file",
]
PUBLIC_CONSTRUCTORS = [
    "Model1D",
    "VerticalDrain",
    "DrainageSimpleMode",
    "Metadata",
    "DSettlementAnalysis",
]
PUBLIC_PROPERTIES = [
    *[("Model1D", name) for name in ("bottom_level", "top_level", "layers", "phreatic_level")],
    ("Model1D", "materials"),
    ("Model1D", "verticals"),
    ("VerticalDrain", "position_drain"),
]


def words(text: str | None) -> str:
    """The text with every run of white space as one blank."""
    return " ".join((text or "").split())


def page(thing: Any) -> str:
    """What `help()` shows."""
    return pydoc.plain(pydoc.render_doc(thing))


@pytest.mark.parametrize("place", PUBLIC_OPERATIONS)
def test_a_public_operation_tells_of_each_of_its_parameters(place: str) -> None:
    owner, name = place.split(".")
    operation = getattr(getattr(dsettlement, owner), name)
    documentation = inspect.getdoc(operation)
    assert documentation
    parameters = list(inspect.signature(operation).parameters.values())[1:]
    if name == "create_material":
        parameters = parameters[:4]
    for parameter in parameters:
        assert re.search(rf"\b{parameter.name}\b", documentation), parameter.name


@pytest.mark.parametrize("name", PUBLIC_CONSTRUCTORS)
def test_a_public_class_tells_of_each_parameter_of_its_constructor(name: str) -> None:
    cls = getattr(dsettlement, name)
    documentation = f"{inspect.getdoc(cls)}\n{cls.__init__.__doc__}"
    for parameter in inspect.signature(cls).parameters:
        assert re.search(rf"\b{parameter}\b", documentation), parameter


@pytest.mark.parametrize(("owner", "name"), PUBLIC_PROPERTIES)
def test_a_public_property_is_documented(owner: str, name: str) -> None:
    assert words(inspect.getdoc(getattr(getattr(dsettlement, owner), name)))


@pytest.mark.parametrize(
    ("place", "sentence"),
    [
        ("Model1D", "Model for a 1D D-Settlement analysis."),
        ("Model1D", "start with default materials or none"),
        ("Model1D", "if False -> linear strain"),
        ("Model1D", "in [kN/m³]"),
        ("Model1D", "parameters for vertical drains, or None (default) to disable option"),
        (
            "Model1D.update_geometry",
            "Overwrite the current (default if not updated before) geometry with the given data.",
        ),
        ("Model1D.update_geometry", "bottom level of the bottom-most layer [m]"),
        (
            "Model1D.update_geometry",
            "list of layers defined by top level [m] and material name",
        ),
        ("Model1D.update_geometry", "defined from top to bottom"),
        ("DrainageSimpleMode", "Simple drainage schema; to be used in VerticalDrain"),
        (
            "OutputFileParser",
            "Helper class to extract results from a D-Settlement output file (.sld).",
        ),
        (
            "OutputFileParser.raw_results",
            "Raw result data. For convenience, specific data can also be extracted using "
            "available methods.",
        ),
    ],
)
def test_the_page_says(place: str, sentence: str) -> None:
    thing: Any = dsettlement
    for name in place.split("."):
        thing = getattr(thing, name)
    shown = f"{inspect.getdoc(thing)} {getattr(thing, '__init__', thing).__doc__}"
    assert sentence in words(shown)


@pytest.mark.parametrize(
    ("thing", "beginning"),
    [
        (dsettlement._CurveList, " Boundaries and Pl-lines are curve lists. "),
        (
            dsettlement._CurveList.__init__,
            " Consist of only unique curves; guaranteed upon creation of _Boundary and _PlLine. ",
        ),
        (
            dsettlement._CurveList.area_above_horizontal,
            " Area above horizontal line defined by y-coordinate. ",
        ),
        (
            dsettlement.Model1D.update_geometry,
            " Overwrite the current (default if not updated before) geometry with the given data.",
        ),
    ],
)
def test_known_texts_begin_to_the_letter(thing: Any, beginning: str) -> None:
    assert thing.__doc__.startswith(beginning)


def test_the_page_of_a_model_reads_like_a_page_of_a_manual() -> None:
    text = page(Model1D)
    assert text.startswith(
        "Python Library Documentation: class Model1D in module sembra.external.dsettlement\n\n"
        "class Model1D(_Model)\n |  Model1D("
    )
    for line in (
        "update_geometry(self, bottom_level, layers, phreatic_level=None)",
        "create_uniform_load(self, name, time, unit_weight, height, y_application)",
        "set_calculation_times(self, *time)",
        "generate_input_file(self, metadata=None, *, dissipation_calculation=None, as_file=False)",
    ):
        assert re.search(rf"^ \|  {re.escape(line)}$", text, re.MULTILINE), line
    for heading in (
        "Methods defined here:",
        "Readonly properties defined here:",
        "Methods inherited from _Model:",
        "Readonly properties inherited from _Model:",
    ):
        assert f" |  {heading}\n" in text


def test_the_page_of_a_model_is_not_broken_by_an_unknown_kind_of_attribute() -> None:
    assert re.findall(r"^ \|  \w+ = <.*$", page(Model1D), re.MULTILINE) == []


def test_the_page_of_an_operation_shows_its_signature_and_its_text() -> None:
    text = page(Model1D.update_geometry)
    assert text.startswith("Python Library Documentation: ")
    assert "update_geometry(self, bottom_level, layers, phreatic_level=None)" in text
    assert "Overwrite the current" in text


def test_the_page_of_the_module_lists_the_public_classes() -> None:
    text = page(dsettlement)
    for name in dsettlement.__all__:
        assert f"class {name}(" in text
    assert "class _Material" not in text


def test_a_subclass_without_a_text_of_its_own_inherits_that_of_its_operations() -> None:
    class Model(Model1D):
        def update_geometry(self, *args: Any, **options: Any) -> None:
            pass

    bound = Model.__new__(Model).update_geometry
    assert inspect.getdoc(bound) == inspect.getdoc(Model1D.update_geometry)


def test_lines_fit_on_a_screen(operation: Any) -> None:
    documentation = inspect.getdoc(operation) or ""
    assert all(len(line) <= 100 for line in documentation.splitlines())
