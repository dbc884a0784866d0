"""From the bytes of a file to its text."""


def decode(data: bytes) -> str:
    """Return the text of a file: UTF-8, or the Windows code page that the tool itself writes.

    A byte that has no character there is shown by its number.
    """
    try:
        return data.decode("utf-8-sig")
    except UnicodeDecodeError:
        return data.decode("cp1252", errors="backslashreplace")
