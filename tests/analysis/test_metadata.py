"""`Metadata`."""

from collections.abc import Callable
from datetime import datetime
from typing import Any

import pytest
from sembra.errors import ModelError
from sembra.external.dsettlement import Metadata

ATTRIBUTES = [
    "_file_name",
    "_company",
    "_created_by",
    "_title_1",
    "_title_2",
    "_title_3",
    "_write_date",
    "_write_time",
]
KEYS = ["date", "time", "file_name", "company", "created_by", "title_1", "title_2", "title_3"]


class Clock(datetime):
    """A clock that stands still and notes how often it is read."""

    reads = 0

    @classmethod
    def now(cls, tz: Any = None) -> "Clock":
        cls.reads += 1
        assert tz is None
        return cls(2031, 2, 3, 4, 5, 6)


@pytest.fixture
def clock(monkeypatch: pytest.MonkeyPatch) -> type[Clock]:
    """Put the clock that stands still in the place of the real one."""
    monkeypatch.setattr(Clock, "reads", 0)
    monkeypatch.setattr("datetime.datetime", Clock)
    return Clock


def too_long(length: int) -> str:
    """The text that refuses a title."""
    return f"Max amount of character of identification title is 50: {length} present."


def test_defaults_are_dashes_and_neither_date_nor_time() -> None:
    assert list(vars(Metadata()).items()) == [
        *[(name, "-") for name in ATTRIBUTES[:6]],
        ("_write_date", False),
        ("_write_time", False),
    ]


def test_attributes_are_stored_in_order_as_given() -> None:
    values: list[Any] = [object(), object(), object(), "a", [], (), object(), object()]
    metadata = Metadata(*values)
    assert list(vars(metadata)) == ATTRIBUTES
    assert all(vars(metadata)[k] is v for k, v in zip(ATTRIBUTES, values, strict=True))


def test_parameters_may_be_given_by_keyword() -> None:
    names = [name.removeprefix("_") for name in ATTRIBUTES]
    given: dict[str, Any] = {name: f"my {name}" for name in reversed(names)}
    assert list(vars(Metadata(**given)).values()) == [f"my {name}" for name in names]


def test_the_defaults_serialise_to_dummy_date_and_time_and_dashes() -> None:
    document = Metadata()._serialize()
    assert type(document) is dict
    assert list(document) == KEYS
    assert list(document.values()) == ["01/01/1900", "00:00:00", *["-"] * 6]


def test_values_go_unconverted() -> None:
    values: list[Any] = [1, None, 2.0, "", [3], (4,)]
    assert list(Metadata(*values)._serialize().values())[2:] == values


def test_each_call_gives_a_new_mapping() -> None:
    metadata = Metadata()
    metadata._serialize().clear()
    assert list(metadata._serialize()) == KEYS


@pytest.mark.parametrize("title", ["title_1", "title_2", "title_3"])
@pytest.mark.parametrize("text", ["", "x" * 50, "é" * 50, "\N{BRICK}" * 50])
def test_a_title_of_up_to_50_characters_is_accepted(title: str, text: str) -> None:
    parameters: dict[str, Any] = {title: text}
    assert Metadata(**parameters)._serialize()[title] == text


@pytest.mark.parametrize("title", ["title_1", "title_2", "title_3"])
@pytest.mark.parametrize("length", [51, 60, 1000])
def test_a_longer_title_is_refused_with_its_length(title: str, length: int) -> None:
    parameters: dict[str, Any] = {title: "x" * length}
    with pytest.raises(ModelError) as refused:
        Metadata(**parameters)
    assert str(refused.value) == too_long(length)


def test_the_first_title_that_is_too_long_decides() -> None:
    with pytest.raises(ModelError) as refused:
        Metadata(title_2="x" * 60, title_3="x" * 70)
    assert str(refused.value) == too_long(60)
    with pytest.raises(ModelError) as refused:
        Metadata(title_1="x" * 55, title_3="x" * 70)
    assert str(refused.value) == too_long(55)


def test_a_refused_record_has_stored_nothing() -> None:
    unmade: Any = Metadata.__new__(Metadata)
    with pytest.raises(ModelError):
        unmade.__init__(title_3="x" * 51)
    assert vars(unmade) == {}


def test_only_the_titles_are_measured() -> None:
    metadata = Metadata(file_name="x" * 200, company="y" * 200, created_by="z" * 200)
    assert metadata._serialize()["file_name"] == "x" * 200


def test_a_title_without_a_length_is_pythons_type_error() -> None:
    make: Callable[..., Any] = Metadata
    with pytest.raises(TypeError, match=r"^object of type 'int' has no len\(\)$"):
        make(title_2=5)
    with pytest.raises(TypeError, match=r"^object of type 'NoneType' has no len\(\)$"):
        make(title_1=None, title_2="x" * 51)


@pytest.mark.parametrize(
    ("write_date", "write_time", "date", "time"),
    [
        (True, True, "03/02/2031", "04:05:06"),
        (True, False, "03/02/2031", "00:00:00"),
        (False, True, "01/01/1900", "04:05:06"),
        (False, False, "01/01/1900", "00:00:00"),
        ("yes", 1, "03/02/2031", "04:05:06"),
        ("", 0, "01/01/1900", "00:00:00"),
    ],
)
def test_date_and_time_are_written_independently_of_each_other(
    write_date: Any, write_time: Any, date: str, time: str, clock: type[Clock]
) -> None:
    document = Metadata(write_date=write_date, write_time=write_time)._serialize()
    assert (document["date"], document["time"]) == (date, time)


def test_the_clock_is_read_once_when_serialising_and_not_before(clock: type[Clock]) -> None:
    metadata = Metadata(write_date=True, write_time=True)
    assert clock.reads == 0
    metadata._serialize()
    assert clock.reads == 1
    metadata._serialize()
    assert clock.reads == 2


def test_the_real_clock_is_the_local_one() -> None:
    before = datetime.now().replace(microsecond=0)
    document = Metadata(write_date=True, write_time=True)._serialize()
    after = datetime.now()
    written = datetime.strptime(f"{document['date']} {document['time']}", "%d/%m/%Y %H:%M:%S")
    assert before <= written <= after


def test_a_failing_clock_reaches_the_caller(clock: type[Clock]) -> None:
    failure = OSError("no clock")

    def now(cls: Any, tz: Any = None) -> Clock:
        raise failure

    with pytest.MonkeyPatch.context() as patch:
        patch.setattr(Clock, "now", classmethod(now))
        with pytest.raises(OSError, match=r"^no clock$") as raised:
            Metadata()._serialize()
    assert raised.value is failure
