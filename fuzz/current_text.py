"""The text that a process works on, kept in a file that outlives the process."""

import mmap
from pathlib import Path

CODEC = ("utf-8", "surrogatepass")


class CurrentText:
    """A file of fixed size, mapped into memory, so that a new text costs a copy and no call.

    What a process has written to mapped memory is in the file even if the process dies at once.
    """

    def __init__(self, path: Path, room: int = 1 << 20) -> None:
        path.write_bytes(bytes(room))
        with path.open("r+b") as file:
            self._memory = mmap.mmap(file.fileno(), room)

    def set(self, text: str) -> None:
        """Write down the text that comes next, as far as there is room."""
        room = (len(self._memory) - 8) // 4  # bytes that a character takes at most
        content = text[:room].encode(*CODEC)
        self._memory[:8] = len(content).to_bytes(8, "little")
        self._memory[8 : 8 + len(content)] = content

    def clear(self) -> None:
        """Say that no text is being worked on."""
        self._memory[:8] = bytes(8)


def read_current_text(path: Path) -> str | None:
    """Return the text that a process left behind, or None if it was at work on none."""
    content = path.read_bytes()
    size = int.from_bytes(content[:8], "little")
    return content[8 : 8 + size].decode(*CODEC) if size else None
