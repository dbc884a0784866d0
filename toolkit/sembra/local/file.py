"""A finished file, held in memory."""

from io import BytesIO, StringIO
from os import PathLike, fspath
from pathlib import Path
from typing import Self


class File:
    """An unchanging file in memory. Make one with `from_data` or `from_path`."""

    __slots__ = ("__weakref__", "_data")

    def __init__(self, data: bytes) -> None:
        """Keep the content.

        Args:
            data: The content of the file.

        Raises:
            TypeError: The content is not bytes.
        """
        if not isinstance(data, bytes):
            raise TypeError(f"data must be bytes, not {type(data).__name__}")
        self._data = data

    @classmethod
    def from_data(cls, data: str | bytes | bytearray | memoryview) -> Self:
        """Make a file of a text, which is encoded as UTF-8, or of bytes.

        Raises:
            TypeError: The data is neither.
            UnicodeEncodeError: The text has a character that UTF-8 can't encode.
        """
        if isinstance(data, str):
            return cls(data.encode())
        if isinstance(data, bytes | bytearray | memoryview):
            return cls(bytes(data))
        raise TypeError(f"data must be str or bytes, not {type(data).__name__}")

    @classmethod
    def from_path(cls, path: str | PathLike[str]) -> Self:
        """Read a file from the disk.

        Raises:
            OSError: It can't be read.
        """
        return cls(Path(path).read_bytes())

    def getvalue(self, encoding: str = "utf-8") -> str:
        """Return the content as text, line ends unchanged.

        Raises:
            UnicodeDecodeError: The content is not text in that encoding.
        """
        return self._data.decode(encoding)

    def getvalue_binary(self) -> bytes:
        """Return the content as bytes."""
        return self._data

    def open(self, encoding: str = "utf-8") -> StringIO:
        """Return a new stream over the content as text."""
        return StringIO(self.getvalue(encoding), newline="")

    def open_binary(self) -> BytesIO:
        """Return a new stream over the content as bytes."""
        return BytesIO(self._data)

    def write_to(self, path: str | PathLike[str]) -> None:
        """Write the content to the disk.

        Raises:
            OSError: It can't be written.
        """
        Path(fspath(path)).write_bytes(self._data)

    def __eq__(self, other: object) -> bool:
        return self._data == other._data if isinstance(other, File) else NotImplemented

    def __hash__(self) -> int:
        return hash(self._data)

    def __repr__(self) -> str:
        return f"<File of {len(self._data)} bytes>"
