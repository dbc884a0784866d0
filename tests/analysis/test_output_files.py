"""`get_output_file` and `get_sld_file`."""

from collections.abc import Callable
from io import BytesIO, StringIO
from typing import Any

import pytest
import sembra.external.external_program as external_program
from sembra.core import File
from sembra.external.dsettlement import DSettlementAnalysis

Factory = Callable[..., Any]

TEXT = "\ufeff[Results]\r\nGrond à la carte\rü\n[End of Results]\r\n"
RESULT = {"the": "result"}


class Finished(DSettlementAnalysis):
    """An analysis whose job is done."""

    asked = 0

    def __init__(self) -> None:
        super().__init__(BytesIO())

    def _get_result_content(self) -> Any:
        self.asked += 1
        return RESULT


@pytest.fixture
def outputs(monkeypatch: pytest.MonkeyPatch) -> dict[str, Any]:
    """The output files by extension, in the place of those of a real job."""
    files: dict[str, Any] = {".sld": BytesIO(TEXT.encode()), ".slo": BytesIO(b"slo")}

    def find(*args: Any) -> Any:
        result_content, extension = args
        assert result_content is RESULT
        return files.get(extension)

    monkeypatch.setattr(external_program, "_get_dseries_file_body", find)
    return files


@pytest.mark.parametrize("extension", [".sld", ".slo"])
def test_an_output_comes_as_the_very_stream(extension: str, outputs: dict[str, Any]) -> None:
    assert Finished().get_output_file(extension) is outputs[extension]
    assert Finished().get_output_file(extension=extension) is outputs[extension]
    assert Finished().get_output_file(extension, as_file=False) is outputs[extension]


def test_without_arguments_the_sld_file_is_asked_for(outputs: dict[str, Any]) -> None:
    assert Finished().get_output_file() is outputs[".sld"]


def test_an_output_comes_as_a_file(outputs: dict[str, Any]) -> None:
    outputs[".sld"].read()
    file = Finished().get_output_file(as_file=True)
    assert type(file) is File
    assert file.getvalue_binary() == TEXT.encode()


def test_the_file_is_made_from_the_bytes_of_the_stream(
    outputs: dict[str, Any], monkeypatch: pytest.MonkeyPatch
) -> None:
    made: list[Any] = []

    def from_data(*args: Any, **options: Any) -> str:
        made.append((args, options))
        return "made"

    monkeypatch.setattr(File, "from_data", from_data)
    file: Any = Finished().get_output_file(".slo", as_file=True)
    assert file == "made"
    assert made == [((b"slo",), {})]


@pytest.mark.parametrize("as_file", [True, False])
@pytest.mark.parametrize("extension", [".error.log", ".err", ".xyz", "", None])
def test_an_output_that_is_not_there_is_none(
    extension: Any, as_file: bool, outputs: dict[str, Any]
) -> None:
    assert Finished().get_output_file(extension, as_file=as_file) is None


def test_any_false_value_is_passed_on_as_a_stream_and_none_as_a_file(
    outputs: dict[str, Any],
) -> None:
    outputs[".err"] = ""
    assert Finished().get_output_file(".err") is outputs[".err"]
    assert Finished().get_output_file(".err", as_file=True) is None


def test_as_file_is_refused_by_position() -> None:
    with pytest.raises(
        TypeError, match=r"takes from 1 to 2 positional arguments but 3 were given$"
    ):
        Finished().get_output_file(".sld", True)  # type: ignore[call-overload]


def test_each_call_asks_anew(outputs: dict[str, Any]) -> None:
    analysis = Finished()
    analysis.get_output_file()
    analysis.get_sld_file()
    assert analysis.asked == 2


def test_a_failure_to_get_the_result_is_passed_on_unchanged(
    outputs: dict[str, Any], monkeypatch: pytest.MonkeyPatch
) -> None:
    error = RuntimeError("not executed")

    def fail(self: Any) -> None:
        raise error

    monkeypatch.setattr(Finished, "_get_result_content", fail)
    for get in (Finished().get_output_file, Finished().get_sld_file):
        with pytest.raises(RuntimeError) as raised:
            get()
        assert raised.value is error


def test_the_sld_file_comes_as_text_at_its_start(outputs: dict[str, Any]) -> None:
    outputs[".sld"].read()
    sld_file = Finished().get_sld_file()
    assert type(sld_file) is StringIO
    assert sld_file.tell() == 0
    assert sld_file.getvalue() == TEXT


def test_the_sld_file_keeps_its_line_ends(outputs: dict[str, Any]) -> None:
    outputs[".sld"] = BytesIO(b"a\r\nb\rc\n")
    sld_file = Finished().get_sld_file()
    assert isinstance(sld_file, StringIO)
    assert sld_file.read() == "a\r\nb\rc\n"


def test_the_sld_file_comes_as_a_file(outputs: dict[str, Any]) -> None:
    file = Finished().get_sld_file(as_file=True)
    assert type(file) is File
    assert file.getvalue_binary() == TEXT.encode()


@pytest.mark.parametrize("as_file", [True, False])
@pytest.mark.parametrize("missing", [None, 0, ""])
def test_a_missing_sld_file_is_a_value_error(
    missing: Any, as_file: bool, outputs: dict[str, Any]
) -> None:
    outputs[".sld"] = missing
    with pytest.raises(ValueError, match=r"^sld file could not be obtained\.$") as raised:
        Finished().get_sld_file(as_file=as_file)
    assert type(raised.value) is ValueError


def test_an_empty_sld_file_is_an_empty_text_and_no_error(outputs: dict[str, Any]) -> None:
    outputs[".sld"] = BytesIO()
    sld_file = Finished().get_sld_file()
    assert type(sld_file) is StringIO
    assert sld_file.getvalue() == ""


def test_bytes_that_are_no_utf_8_are_the_decoders_error(outputs: dict[str, Any]) -> None:
    outputs[".sld"] = BytesIO(b"ok\xff")
    with pytest.raises(UnicodeDecodeError) as raised:
        Finished().get_sld_file()
    assert (raised.value.encoding, raised.value.start) == ("utf-8", 2)
    file = Finished().get_sld_file(as_file=True)
    assert isinstance(file, File)
    assert file.getvalue_binary() == b"ok\xff"


@pytest.mark.parametrize("as_file", [True, False])
def test_the_sld_file_is_got_through_get_output_file_with_keywords(as_file: bool) -> None:
    calls: list[Any] = []

    class Own(Finished):
        def get_output_file(self, *args: Any, **options: Any) -> Any:
            calls.append((args, options))
            return BytesIO(b"own")

    got: Any = Own().get_sld_file(as_file=as_file)
    assert calls == [((), {"extension": ".sld", "as_file": as_file})]
    assert got.getvalue() == (b"own" if as_file else "own")


def test_a_file_is_handed_over_as_it_came() -> None:
    file = File.from_data("x")

    class Own(Finished):
        def get_output_file(self, *args: Any, **options: Any) -> Any:
            return file

    assert Own().get_sld_file(as_file=True) is file
