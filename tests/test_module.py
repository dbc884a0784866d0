"""The module as a whole: its names, its place in the namespace and its files."""

import importlib
import sys
from enum import Enum
from importlib.metadata import version
from pathlib import Path
from subprocess import run
from typing import Any

import pytest
import sembra.external.external_program

NAME = "sembra.external.dsettlement"
dsettlement: Any = importlib.import_module(NAME)

PUBLIC = {
    "CalculationModel",
    "ConsolidationModel",
    "DSettlementAnalysis",
    "DrainGrid",
    "DrainType",
    "DrainageSimpleMode",
    "Metadata",
    "Model1D",
    "Model2D",
    "OutputFileParser",
    "VerticalDrain",
}
PRIVATE = {
    "_Boundary",
    "_Curve",
    "_CurveList",
    "_Geometry1D",
    "_Layer",
    "_Load",
    "_Material",
    "_Model",
    "_NonUniformLoad",
    "_OtherLoad",
    "_PlLine",
    "_Point",
    "_UniformLoad",
    "_Vertical",
}
SISTER_NAMES = {
    "sembra.core": ["Color", "File", "_post_on_addon_endpoint"],
    "sembra.errors": ["InternalError", "ModelError", "ParsingError"],
    "sembra.external.external_program": [
        "ExternalProgram",
        "_JobContent",
        "_dseries_exception_map",
        "_get_dseries_file_body",
    ],
}


def test_all_lists_the_public_names_and_nothing_else() -> None:
    assert set(dsettlement.__all__) == PUBLIC
    assert len(dsettlement.__all__) == len(PUBLIC)
    assert all(type(name) is str for name in dsettlement.__all__)


def test_a_star_import_brings_the_public_names_and_nothing_else() -> None:
    namespace: dict[str, Any] = {}
    exec(f"from {NAME} import *", namespace)
    assert set(namespace) - {"__builtins__"} == PUBLIC


@pytest.mark.parametrize("name", sorted(PUBLIC | PRIVATE))
def test_every_class_is_an_attribute_of_the_module_and_says_so(name: str) -> None:
    cls = getattr(dsettlement, name)
    assert isinstance(cls, type)
    assert cls.__name__ == name
    assert cls.__qualname__ == name
    assert cls.__module__ == NAME


@pytest.mark.parametrize("name", sorted(PUBLIC))
def test_every_public_class_is_documented(name: str) -> None:
    cls = getattr(dsettlement, name)
    assert cls.__doc__
    assert cls.__doc__.strip()
    if issubclass(cls, Enum):
        assert cls.__doc__ != Enum.__doc__


@pytest.mark.parametrize(
    ("module", "name"), [(module, name) for module in SISTER_NAMES for name in SISTER_NAMES[module]]
)
def test_names_of_the_sister_modules_stand_in_the_module(module: str, name: str) -> None:
    sister = importlib.import_module(module)
    assert getattr(dsettlement, name) is getattr(sister, name)


def test_the_module_knows_its_name_and_describes_itself() -> None:
    assert dsettlement.__name__ == NAME
    assert "D-Settlement" in dsettlement.__doc__
    assert dsettlement.__spec__.name == NAME


def test_the_enclosing_packages_stay_namespaces_that_others_can_add_to() -> None:
    for name in ("sembra", "sembra.external"):
        package = importlib.import_module(name)
        assert getattr(package, "__file__", None) is None
        assert all(not (Path(place) / "__init__.py").exists() for place in package.__path__)


def test_type_information_is_installed_beside_the_module() -> None:
    folder = Path(dsettlement.__file__).parent
    assert (folder / "py.typed").is_file()
    assert (folder / "__init__.pyi").is_file()


def test_importing_again_gives_the_same_module() -> None:
    assert importlib.import_module(NAME) is dsettlement


def test_an_unknown_name_is_an_attribute_error() -> None:
    with pytest.raises(AttributeError, match=f"module '{NAME}' has no attribute 'Model3D'"):
        _ = dsettlement.Model3D


def test_the_analysis_is_an_external_program() -> None:
    program = sembra.external.external_program.ExternalProgram
    assert dsettlement.DSettlementAnalysis.__bases__ == (program,)


@pytest.mark.parametrize(
    "name",
    [
        "DrainageSimpleMode",
        "Metadata",
        "OutputFileParser",
        "VerticalDrain",
        "_Geometry1D",
        "_Material",
        "_Vertical",
    ],
)
def test_records_have_no_base_class(name: str) -> None:
    assert getattr(dsettlement, name).__bases__ == (object,)
    assert type(getattr(dsettlement, name)) is type


def test_the_module_and_its_distribution_say_the_same_version() -> None:
    assert dsettlement.__version__ == version("sembra-external-dsettlement")


LONE = """
import sys

class Nothing:
    def find_spec(self, name, path=None, target=None):
        if name == {missing!r}:
            raise ModuleNotFoundError(f"No module named {{name!r}}", name=name)

sys.meta_path.insert(0, Nothing())
sys.modules.pop({missing!r}, None)  # what counts lines has imported much itself
import sembra.external.dsettlement
"""


@pytest.mark.parametrize("missing", ["sembra.errors", "sembra.core"])
def test_without_the_toolkit_the_import_says_what_to_install(missing: str) -> None:
    done = run([sys.executable, "-c", LONE.format(missing=missing)], capture_output=True, text=True)
    *_, error, advice = done.stderr.splitlines()
    assert error == f"ModuleNotFoundError: No module named {missing!r}"
    assert "pip install ./toolkit" in advice


def test_without_something_else_the_import_only_fails() -> None:
    program = LONE.format(missing="datetime")
    done = run([sys.executable, "-c", program], capture_output=True, text=True)
    assert done.stderr.splitlines()[-1] == "ModuleNotFoundError: No module named 'datetime'"
