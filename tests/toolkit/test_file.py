"""Files in memory."""

from pathlib import Path

import pytest
from sembra.core import File


def test_text_is_kept_as_utf_8() -> None:
    file = File.from_data("é\r\n")
    assert file.getvalue() == "é\r\n"
    assert file.getvalue_binary() == "é\r\n".encode()


@pytest.mark.parametrize("kind", [bytes, bytearray, memoryview])
def test_bytes_are_kept_as_they_are(kind: type) -> None:
    assert File.from_data(kind(b"\xff\x00")).getvalue_binary() == b"\xff\x00"


def test_later_changes_of_the_data_do_not_reach_the_file() -> None:
    data = bytearray(b"abc")
    file = File.from_data(data)
    data[0] = 0
    assert file.getvalue() == "abc"


def test_streams_stand_at_their_start() -> None:
    file = File.from_data("a\r\nb")
    assert file.open().read() == "a\r\nb"
    assert file.open_binary().read() == b"a\r\nb"


def test_goes_to_the_disk_and_back(tmp_path: Path) -> None:
    File.from_data("x").write_to(tmp_path / "file")
    assert File.from_path(tmp_path / "file") == File.from_data(b"x")


def test_equality_hash_and_repr() -> None:
    assert len({File.from_data("a"), File.from_data(b"a"), File.from_data("b")}) == 2
    assert File.from_data("a") != b"a"
    assert repr(File.from_data("é")) == "<File of 2 bytes>"


def test_an_empty_file_is_true() -> None:
    assert File.from_data("")


@pytest.mark.parametrize("data", [None, 3, ["a"]])
def test_other_data_is_refused(data: object) -> None:
    with pytest.raises(TypeError, match="data must be str or bytes"):
        File.from_data(data)  # type: ignore[arg-type]


@pytest.mark.parametrize("data", ["text", bytearray(b"bytes"), None])
def test_a_file_keeps_bytes_alone(data: object) -> None:
    with pytest.raises(TypeError, match=f"data must be bytes, not {type(data).__name__}"):
        File(data)  # type: ignore[arg-type]


def test_bytes_that_are_no_text_fail_on_reading_as_text() -> None:
    with pytest.raises(UnicodeDecodeError):
        File.from_data(b"\xff").getvalue()
