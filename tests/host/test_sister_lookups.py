"""What the module takes from elsewhere at the time of a call is looked up at that call.

A replacement in the sister module works, and one in the module's own namespace wins over it.
Classes that are derived from or raised stay those of the import.
"""

from collections.abc import Callable
from datetime import datetime
from io import BytesIO
from typing import Any

import pytest
import sembra.core
import sembra.errors
import sembra.external.dsettlement as dsettlement
import sembra.external.external_program
from sembra.external.dsettlement import DSettlementAnalysis, Metadata, _Material

Factory = Callable[..., Any]

CORE = "sembra.core"
PROGRAM = "sembra.external.external_program"
MODULE = "sembra.external.dsettlement"


class Clock(datetime):
    """A clock that stands still, as class and as module."""

    year_shown = 2031

    @classmethod
    def now(cls, tz: Any = None) -> "Clock":
        return cls(cls.year_shown, 2, 3, 4, 5, 6)


def endpoint(text: str) -> Any:
    """A post that answers with this text."""
    return lambda *args, **options: {"input_file": text}


def file_class(mark: str) -> Any:
    """A class whose files are the mark and the data."""
    return type("File", (), {"from_data": staticmethod(lambda data: (mark, data))})


def color_class(mark: str) -> Any:
    """A class whose random colour is the mark."""
    return type("Color", (), {"random": staticmethod(lambda: mark)})


def clock_class(year: int) -> Any:
    """A clock in this year; it is its own module, too."""
    clock = type("Clock", (Clock,), {"year_shown": year})
    clock.datetime = clock  # type: ignore[attr-defined]
    return clock


@pytest.fixture
def read(new_model_1d: Factory, monkeypatch: pytest.MonkeyPatch) -> dict[str, Callable[[], Any]]:
    """For each name, an operation that looks it up; it gives back the mark of the stand-in."""
    model = new_model_1d()
    analysis = DSettlementAnalysis(BytesIO(b"abc"))
    monkeypatch.setattr(analysis, "_get_result_content", dict)

    def handled() -> Any:
        try:
            analysis._handle_execution_error("message")
        except LookupError as error:
            return str(error)
        return None

    return {
        "_post_on_addon_endpoint": lambda: model.generate_input_file().getvalue().decode(),
        "_get_dseries_file_body": lambda: analysis.get_output_file(".slo"),
        "_JobContent": lambda: analysis._generate_job_content(),
        "_dseries_exception_map": handled,
        "Color": lambda: _Material(1.0, 2.0).color,
        "datetime": lambda: Metadata(write_date=True)._serialize()["date"][-4:],
    }


STAND_INS: dict[str, tuple[str, Callable[[str], Any]]] = {
    "_post_on_addon_endpoint": (CORE, endpoint),
    "_get_dseries_file_body": (PROGRAM, lambda mark: lambda *args: mark),
    "_JobContent": (PROGRAM, lambda mark: lambda *, body: mark),
    "_dseries_exception_map": (PROGRAM, lambda mark: {"message": (mark, LookupError)}),
    "Color": (CORE, color_class),
    "datetime": ("datetime", lambda mark: clock_class(int(mark))),
}


@pytest.mark.parametrize("name", STAND_INS)
def test_a_stand_in_in_the_sister_module_is_found(
    name: str, read: dict[str, Callable[[], Any]], monkeypatch: pytest.MonkeyPatch
) -> None:
    home, stand_in = STAND_INS[name]
    for mark in ("2041", "2042"):
        monkeypatch.setattr(f"{home}.{name}", stand_in(mark))
        assert read[name]() == mark


@pytest.mark.parametrize("name", STAND_INS)
def test_a_stand_in_in_the_modules_own_namespace_is_found(
    name: str, read: dict[str, Callable[[], Any]], monkeypatch: pytest.MonkeyPatch
) -> None:
    _, stand_in = STAND_INS[name]
    for mark in ("2041", "2042"):
        monkeypatch.setattr(f"{MODULE}.{name}", stand_in(mark))
        assert read[name]() == mark


@pytest.mark.parametrize("name", STAND_INS)
def test_the_modules_own_namespace_wins_as_long_as_the_stand_in_is_there(
    name: str, read: dict[str, Callable[[], Any]], monkeypatch: pytest.MonkeyPatch
) -> None:
    home, stand_in = STAND_INS[name]
    monkeypatch.setattr(f"{home}.{name}", stand_in("2041"))
    with pytest.MonkeyPatch.context() as own:
        own.setattr(f"{MODULE}.{name}", stand_in("2042"))
        assert read[name]() == "2042"
    assert read[name]() == "2041"


@pytest.mark.parametrize("place", [CORE, MODULE])
def test_the_class_of_files_is_found_in_both_places(
    place: str, new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(f"{place}.File", file_class(place))
    monkeypatch.setattr(f"{PROGRAM}._get_dseries_file_body", lambda *args: BytesIO(b"abc"))
    monkeypatch.setattr(DSettlementAnalysis, "_get_result_content", dict)
    text = post.answer["input_file"]
    analysis = DSettlementAnalysis(BytesIO())
    assert new_model_1d().generate_input_file(as_file=True) == (place, text)
    assert analysis.get_output_file(as_file=True) == (place, b"abc")
    assert analysis.get_sld_file(as_file=True) == (place, b"abc")


def test_a_changed_entry_of_the_exception_map_is_found(
    read: dict[str, Callable[[], Any]], monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setitem(
        sembra.external.external_program._dseries_exception_map, "message", ("x", LookupError)
    )
    assert read["_dseries_exception_map"]() == "x"


def test_what_the_exception_map_raises_must_be_an_exception(
    read: dict[str, Callable[[], Any]], monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setitem(
        sembra.external.external_program._dseries_exception_map, "message", ("x", str)
    )
    with pytest.raises(TypeError, match=r"^exceptions must derive from BaseException$"):
        read["_dseries_exception_map"]()


def test_default_materials_take_no_random_color(
    new_model_1d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr(sembra.core, "Color", None)
    assert len(new_model_1d().materials) == 11


def test_a_class_that_is_raised_stays_that_of_the_import(
    new_model_1d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    model_error = sembra.errors.ModelError
    monkeypatch.setattr(sembra.errors, "ModelError", RuntimeError)
    with pytest.raises(model_error):
        new_model_1d().update_geometry(-1.0, [])


@pytest.mark.parametrize("place", ["sembra.errors", MODULE])
def test_the_class_that_is_caught_is_found_in_both_places(
    place: str, new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    internal_error = sembra.errors.InternalError
    monkeypatch.setattr(f"{place}.InternalError", LookupError)
    for error in (internal_error("down"), OSError("no network")):
        post.error = error
        with pytest.raises(type(error)) as raised:
            new_model_1d().generate_input_file()
        assert raised.value is error
    post.error = KeyError("down")
    with pytest.raises(Exception, match=r"^Input file could not be generated") as raised:
        new_model_1d().generate_input_file()
    assert raised.value.__cause__ is post.error


def test_several_classes_may_be_caught(
    new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr("sembra.errors.InternalError", (KeyError, IndexError))
    post.error = IndexError("down")
    with pytest.raises(Exception, match=r"^Input file could not be generated") as raised:
        new_model_1d().generate_input_file()
    assert raised.value.__cause__ is post.error


@pytest.mark.parametrize("replaced", [5, str, (KeyError, str)])
def test_what_is_caught_must_be_classes_of_exceptions(
    replaced: Any, new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    monkeypatch.setattr("sembra.errors.InternalError", replaced)
    post.error = OSError("down")
    with pytest.raises(TypeError, match=r"^catching classes that do not inherit from BaseExcep"):
        new_model_1d().generate_input_file()


def test_the_base_of_the_analysis_stays_that_of_the_import(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    base = sembra.external.external_program.ExternalProgram
    monkeypatch.setattr(sembra.external.external_program, "ExternalProgram", None)
    assert isinstance(DSettlementAnalysis(BytesIO()), base)
    assert dsettlement.DSettlementAnalysis.__base__ is base
