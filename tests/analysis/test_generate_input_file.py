"""`generate_input_file`: the call of the template-filling service and its answer."""

import sys
import traceback
from collections.abc import Callable
from io import BytesIO
from typing import Any

import pytest
from sembra.core import File
from sembra.errors import InternalError, ModelError
from sembra.external.dsettlement import Metadata, Model1D, _Vertical

Factory = Callable[..., Any]

PATH = "filldsettlementtemplate/v1/jobs/"
NOT_GENERATED = "Input file could not be generated, please check your model"
TEXT = "Grond à la carte: \N{GREEK SMALL LETTER GAMMA} \N{BRICK}\r\nü'\n"


def test_the_document_is_posted_once_under_the_key_input(build_story: Factory, post: Any) -> None:
    model = build_story()
    model.generate_input_file()
    document = model._generate_input()
    assert post.calls == [((PATH, {"input": document}), {"timeout": 60})]
    assert list(post.document) == list(document)
    ((path, body), options), *_ = post.calls
    assert (type(path), type(body), type(options["timeout"])) == (str, dict, int)


def test_without_arguments_the_defaults_are_sent(new_model_1d: Factory, post: Any) -> None:
    new_model_1d().generate_input_file()
    document = post.document
    for key in ("file_name", "company", "created_by", "title_1", "title_2", "title_3"):
        assert document[key] == "-"
    assert (document["date"], document["time"]) == ("01/01/1900", "00:00:00")
    assert document["dissipation_calculation"] is None


def test_metadata_may_be_given_by_position(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    model.generate_input_file(Metadata("by position"))
    assert post.document["file_name"] == "by position"
    model.generate_input_file(metadata=Metadata("by keyword"))
    assert post.document["file_name"] == "by keyword"


def test_the_dissipation_is_sent_as_a_position(new_model_1d: Factory, post: Any) -> None:
    new_model_1d().generate_input_file(dissipation_calculation=_Vertical(50.0))
    assert post.document["dissipation_calculation"] == 50.0
    assert type(post.document["dissipation_calculation"]) is float


def test_the_options_are_refused_by_position(new_model_1d: Factory) -> None:
    with pytest.raises(
        TypeError, match=r"takes from 1 to 2 positional arguments but 3 were given$"
    ):
        new_model_1d().generate_input_file(None, None)


def test_both_arguments_of_the_document_are_passed_on(new_model_1d: Factory, post: Any) -> None:
    calls: list[Any] = []

    class Model(Model1D):
        def _generate_input(
            self, metadata: Any = None, dissipation_calculation: Any = None
        ) -> dict[str, Any]:
            calls.append((metadata, dissipation_calculation))
            return {"mine": 1}

    metadata, vertical = Metadata(), _Vertical(1.0)
    model = new_model_1d(Model)
    model.generate_input_file()
    model.generate_input_file(metadata, dissipation_calculation=vertical, as_file=True)
    assert calls == [(None, None), (metadata, vertical)]
    assert post.document == {"mine": 1}


def test_an_invalid_drain_is_refused_and_no_request_is_made(
    new_model_1d: Factory, new_strip_drain: Factory, post: Any
) -> None:
    model = new_model_1d(vertical_drain=new_strip_drain(range_to=101.0))
    with pytest.raises(ModelError, match=r"^Vertical drains 'range_to' \(101.0\) must be between"):
        model.generate_input_file()
    assert post.calls == []


def test_the_answer_comes_as_a_stream_of_utf_8_bytes_at_its_start(
    new_model_1d: Factory, post: Any
) -> None:
    post.answer = {"input_file": TEXT, "more": "is not read"}
    stream = new_model_1d().generate_input_file()
    assert type(stream) is BytesIO
    assert stream.tell() == 0
    assert stream.getvalue() == stream.read() == TEXT.encode("utf-8")


def test_the_answer_comes_as_a_file(new_model_1d: Factory, post: Any) -> None:
    post.answer = {"input_file": TEXT}
    file = new_model_1d().generate_input_file(as_file=True)
    assert type(file) is File
    assert file.getvalue_binary() == TEXT.encode("utf-8")


def test_the_file_is_made_from_the_very_text(
    new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    made: list[Any] = []

    def from_data(*args: Any, **options: Any) -> str:
        made.append((args, options))
        return "made"

    monkeypatch.setattr(File, "from_data", from_data)
    post.answer = {"input_file": object()}
    assert new_model_1d().generate_input_file(as_file="yes") == "made"
    assert made == [((post.answer["input_file"],), {})]


def test_each_call_gives_a_new_stream(new_model_1d: Factory, post: Any) -> None:
    model = new_model_1d()
    first, second = model.generate_input_file(), model.generate_input_file()
    assert first is not second
    assert first.getvalue() == second.getvalue()
    assert len(post.calls) == 2


def test_an_empty_answer_is_an_empty_stream(new_model_1d: Factory, post: Any) -> None:
    post.answer = {"input_file": ""}
    assert new_model_1d().generate_input_file().getvalue() == b""


def test_a_failure_of_the_service_is_told_as_a_plain_exception(
    new_model_1d: Factory, post: Any
) -> None:
    post.error = InternalError("the service is down")
    with pytest.raises(Exception, match=rf"^{NOT_GENERATED}$") as raised:
        new_model_1d().generate_input_file()
    assert type(raised.value) is Exception
    assert raised.value.args == (NOT_GENERATED,)
    assert raised.value.__cause__ is post.error
    assert raised.value.__suppress_context__ is True


def test_the_reasons_noted_by_the_service_are_shown_last(new_model_1d: Factory, post: Any) -> None:
    post.error = InternalError("refused")
    post.error.add_note("material 'Clay', cp: input should be a valid number")
    post.error.add_note("load 'Sand': there is no material of this name")
    with pytest.raises(Exception, match=NOT_GENERATED) as raised:
        new_model_1d().generate_input_file()
    assert raised.value.args == (NOT_GENERATED,)
    shown = "".join(traceback.format_exception(raised.value)).splitlines()
    assert shown[-3:] == [f"Exception: {NOT_GENERATED}", *post.error.__notes__]


@pytest.mark.parametrize("notes", [None, "ab", [1, 2], property(lambda failure: 1 / 0)])
def test_a_failure_with_odd_notes_is_a_failure(
    notes: Any, new_model_1d: Factory, post: Any
) -> None:
    post.error = type("OddError", (InternalError,), {"__notes__": notes})()
    with pytest.raises(Exception, match=NOT_GENERATED) as raised:
        new_model_1d().generate_input_file()
    assert type(raised.value) is Exception
    assert raised.value.__cause__ is post.error


def test_any_kind_of_internal_error_is_a_failure_of_the_service(
    new_model_1d: Factory, post: Any
) -> None:
    class SlowError(InternalError):
        pass

    post.error = SlowError("too slow")
    with pytest.raises(Exception, match=rf"^{NOT_GENERATED}$") as raised:
        new_model_1d().generate_input_file(as_file=True)
    assert raised.value.__cause__ is post.error


@pytest.mark.parametrize("error", [InternalError("down"), OSError("no network")])
def test_a_failure_is_not_lost_while_its_class_is_looked_up(
    error: Exception, new_model_1d: Factory, monkeypatch: pytest.MonkeyPatch
) -> None:
    def fail(*args: Any, **options: Any) -> None:
        # A lookup that is not answered from this cache forgets the exception that is on its way.
        sys._clear_type_cache()
        raise error

    monkeypatch.setattr("sembra.core._post_on_addon_endpoint", fail)
    with pytest.raises(Exception, match=rf"^({error}|{NOT_GENERATED})$") as raised:
        new_model_1d().generate_input_file()
    assert error in (raised.value, raised.value.__cause__)


@pytest.mark.parametrize(
    "error",
    [
        ModelError("refused"),
        OSError("no network"),
        Exception("anything"),
        KeyboardInterrupt(),
        SystemExit(3),
    ],
)
def test_any_other_failure_of_the_post_is_passed_on_unchanged(
    error: BaseException, new_model_1d: Factory, post: Any
) -> None:
    post.error = error
    with pytest.raises(type(error)) as raised:
        new_model_1d().generate_input_file()
    assert raised.value is error
    assert raised.value.__cause__ is None


@pytest.mark.parametrize("operation", ["_validate", "_serialize", "_generate_input"])
def test_only_the_post_stands_under_the_translation(
    operation: str, new_model_1d: Factory, post: Any
) -> None:
    error = InternalError("not from the post")

    def fail(self: Any, *args: Any) -> None:
        raise error

    model = new_model_1d(type("Model", (Model1D,), {operation: fail}))
    with pytest.raises(InternalError) as raised:
        model.generate_input_file()
    assert raised.value is error
    assert post.calls == []


@pytest.mark.parametrize("as_file", [True, False])
@pytest.mark.parametrize(
    ("answer", "failure", "message"),
    [
        ({}, KeyError, "'input_file'"),
        ({"output_file": ""}, KeyError, "'input_file'"),
        (None, TypeError, "'NoneType' object is not subscriptable"),
        ([], TypeError, "list indices must be integers or slices, not str"),
    ],
)
def test_an_answer_without_the_file_is_pythons_own_error(
    answer: Any,
    failure: type[Exception],
    message: str,
    as_file: bool,
    new_model_1d: Factory,
    post: Any,
) -> None:
    post.answer = answer
    with pytest.raises(failure) as raised:
        new_model_1d().generate_input_file(as_file=as_file)
    assert type(raised.value) is failure
    assert str(raised.value) == message
    assert raised.value.__cause__ is None


def test_an_internal_error_while_reading_the_answer_is_not_translated(
    new_model_1d: Factory, post: Any
) -> None:
    class Answer(dict[str, str]):
        def __missing__(self, key: str) -> str:
            raise InternalError(f"no {key}")

    post.answer = Answer()
    with pytest.raises(InternalError, match=r"^no input_file$"):
        new_model_1d().generate_input_file()


def test_text_that_cannot_be_encoded_is_pythons_unicode_error(
    new_model_1d: Factory, post: Any
) -> None:
    post.answer = {"input_file": "a\ud800"}
    with pytest.raises(UnicodeEncodeError, match="surrogates not allowed") as raised:
        new_model_1d().generate_input_file()
    assert (raised.value.encoding, raised.value.start) == ("utf-8", 1)


def test_an_answer_that_is_no_text_is_pythons_own_error(new_model_1d: Factory, post: Any) -> None:
    post.answer = {"input_file": b"bytes"}
    with pytest.raises(AttributeError, match=r"^'bytes' object has no attribute 'encode'$"):
        new_model_1d().generate_input_file()


def test_a_failure_of_the_file_is_passed_on_unchanged(
    new_model_1d: Factory, post: Any, monkeypatch: pytest.MonkeyPatch
) -> None:
    error = InternalError("no storage")

    def fail(data: Any) -> None:
        raise error

    monkeypatch.setattr(File, "from_data", fail)
    with pytest.raises(InternalError) as raised:
        new_model_1d().generate_input_file(as_file=True)
    assert raised.value is error


def test_generating_leaves_the_model_as_it_was(build_story: Factory, post: Any) -> None:
    model = build_story()
    before = dict(vars(model))
    model.generate_input_file()
    first = post.document
    model.generate_input_file()
    assert vars(model) == before
    assert post.document == first


def test_a_failure_of_the_service_keeps_what_the_caller_was_handling(
    new_model_1d: Factory, post: Any
) -> None:
    def generate_while_handling() -> None:
        try:
            raise KeyError("before")
        except KeyError:
            new_model_1d().generate_input_file()

    down = post.error = InternalError("down")
    with pytest.raises(Exception, match=r"^Input file could not be generated") as caught:
        generate_while_handling()
    assert caught.value.__cause__ is down
    assert caught.value.__context__ is down
    assert isinstance(down.__context__, KeyError)
