"""`DSettlementAnalysis`: what it sends to the worker and what it does with the worker's errors."""

import base64
from collections.abc import Callable
from io import BytesIO
from types import SimpleNamespace
from typing import Any

import pytest
import sembra.external.external_program as external_program
from sembra.core import File
from sembra.external.dsettlement import DSettlementAnalysis
from sembra.external.external_program import ExternalProgram, _JobContent

Factory = Callable[..., Any]

BYTES = "Grond à la carte\r\n".encode() * 100 + bytes(range(256))
OPERATIONS = [
    "__init__",
    "_handle_execution_error",
    "_generate_job_content",
    "get_output_file",
    "get_sld_file",
]

analyse: Any = DSettlementAnalysis


def body(input_file: Any) -> str:
    """The body of the job for an input file."""
    content: Any = analyse(input_file)._generate_job_content()
    assert type(content) is _JobContent
    assert type(content.body) is str
    return str(content.body)


def test_operations_stand_in_declared_order() -> None:
    assert [name for name in vars(DSettlementAnalysis) if name in OPERATIONS] == OPERATIONS


def test_execute_is_inherited_unchanged() -> None:
    assert "execute" not in vars(DSettlementAnalysis)
    assert DSettlementAnalysis.execute is ExternalProgram.execute


def test_the_input_file_is_stored_before_the_base_is_made_with_name_and_version(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    calls: list[Any] = []

    def make(self: Any, *args: Any, **options: Any) -> None:
        calls.append((dict(vars(self)), args, options))

    monkeypatch.setattr(ExternalProgram, "__init__", make)
    stream = BytesIO()
    analysis = DSettlementAnalysis(stream)
    assert calls == [({"input_file": stream}, ("dsettlement",), {"version": 1})]
    assert analysis.input_file is stream


@pytest.mark.parametrize("anything", [None, "text", 5, b"bytes"])
def test_the_input_file_is_not_examined_at_construction(anything: Any) -> None:
    assert analyse(anything).input_file is anything
    assert analyse(input_file=anything).input_file is anything


@pytest.mark.parametrize(
    ("anything", "kind"), [(None, "NoneType"), ("text", "str"), (b"bytes", "bytes")]
)
def test_an_input_file_of_another_kind_fails_when_the_job_is_generated(
    anything: Any, kind: str
) -> None:
    analysis = analyse(anything)
    message = rf"^'{kind}' object has no attribute 'getvalue_binary'$"
    with pytest.raises(AttributeError, match=message):
        analysis._generate_job_content()


def test_the_body_is_the_input_file_in_base64() -> None:
    assert body(BytesIO(BYTES)) == base64.b64encode(BYTES).decode()
    assert "\n" not in body(BytesIO(BYTES))


def test_a_stream_that_has_been_read_to_its_end_is_sent_whole() -> None:
    stream = BytesIO(BYTES)
    stream.read()
    assert body(stream) == base64.b64encode(BYTES).decode()
    assert stream.tell() == len(BYTES)


def test_a_file_and_a_stream_with_the_same_bytes_give_the_same_body() -> None:
    text = "Grond à la carte\r\n"
    assert body(File.from_data(text)) == body(BytesIO(text.encode()))


@pytest.mark.parametrize("empty", [BytesIO(), File.from_data("")])
def test_an_empty_input_file_gives_an_empty_body(empty: Any) -> None:
    assert body(empty) == ""


def test_anything_else_than_a_stream_is_treated_as_a_file() -> None:
    duck = SimpleNamespace(getvalue_binary=lambda: b"quack", getvalue=lambda: b"no")
    assert body(duck) == base64.b64encode(b"quack").decode()


def test_a_stream_of_a_class_of_its_own_is_read_through_its_getvalue() -> None:
    class Stream(BytesIO):
        def getvalue(self) -> bytes:
            return b"own"

    assert body(Stream(b"base")) == base64.b64encode(b"own").decode()


def test_the_input_file_is_read_when_the_job_is_generated() -> None:
    analysis = analyse(BytesIO(b"early"))
    analysis.input_file = BytesIO(b"late")
    assert analysis._generate_job_content().body == base64.b64encode(b"late").decode()


def test_the_job_content_is_made_with_the_one_keyword_body(monkeypatch: pytest.MonkeyPatch) -> None:
    calls: list[Any] = []

    def content(*args: Any, **options: Any) -> str:
        calls.append((args, options))
        return "content"

    monkeypatch.setattr(external_program, "_JobContent", content)
    assert analyse(BytesIO(b"abc"))._generate_job_content() == "content"
    assert calls == [((), {"body": "YWJj"})]


def test_a_known_message_of_the_worker_raises_the_mapped_exception(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    class SoilError(Exception):
        pass

    monkeypatch.setitem(external_program._dseries_exception_map, "E12", ("No soil.", SoilError))
    with pytest.raises(SoilError) as raised:
        analyse(BytesIO())._handle_execution_error("E12")
    assert raised.value.args == ("No soil.",)


@pytest.mark.parametrize("message", ["", "E1", "e12", " E12", "E12 ", "anything"])
def test_any_other_message_is_left_to_the_base(
    message: str, monkeypatch: pytest.MonkeyPatch
) -> None:
    known = {"E12": ("No soil.", ValueError)}
    monkeypatch.setattr(external_program, "_dseries_exception_map", known)
    assert analyse(BytesIO())._handle_execution_error(message) is None


def test_a_known_message_without_an_exception_is_left_to_the_base(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    monkeypatch.setattr(external_program, "_dseries_exception_map", {"E12": ("No soil.", None)})
    assert analyse(BytesIO())._handle_execution_error("E12") is None


def test_the_mapped_exception_is_made_by_calling_it_with_the_text(
    monkeypatch: pytest.MonkeyPatch,
) -> None:
    def make(*args: Any, **options: Any) -> Exception:
        assert (args, options) == (("text",), {})
        return LookupError("made")

    monkeypatch.setattr(external_program, "_dseries_exception_map", {"E12": ("text", make)})
    with pytest.raises(LookupError, match=r"^made$"):
        analyse(BytesIO())._handle_execution_error(message="E12")


def test_a_message_that_does_not_hash_is_pythons_type_error() -> None:
    with pytest.raises(TypeError, match=r"^unhashable type: 'list'$"):
        analyse(BytesIO())._handle_execution_error([])
