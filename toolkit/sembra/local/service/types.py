"""The kinds of value that the document of a model is made of."""

from typing import Annotated, Any

from pydantic import (
    AfterValidator,
    BaseModel,
    BeforeValidator,
    ConfigDict,
    FailFast,
    Field,
    model_validator,
)
from pydantic_core import PydanticCustomError

MOST_UNKNOWN = 100
"""How many keys a mapping may have beyond the declared ones and still have each told."""


class Strict(BaseModel):
    """A mapping with exactly the declared keys, whose values are of the declared types."""

    model_config = ConfigDict(
        extra="forbid",
        strict=True,
        frozen=True,
        allow_inf_nan=False,
        # A mapping is checked as a part of the request alone: it needs no checks of its own.
        defer_build=True,
    )

    @model_validator(mode="before")
    @classmethod
    def _has_no_flood_of_keys(cls, value: Any) -> Any:
        if isinstance(value, dict) and len(value) > len(cls.model_fields) + MOST_UNKNOWN:
            raise PydanticCustomError("too_many_keys", "has too many keys")
        return value


def _whole(value: Any) -> Any:
    return int(value) if isinstance(value, float) and value.is_integer() else value


def _single_line(text: str) -> str:
    if any(character < " " or character in "\x7f\x85\u2028\u2029" for character in text):
        raise ValueError("must be a single line without control characters")
    return text


def _no_mark(text: str) -> str:
    if text.lstrip().startswith("["):
        raise ValueError("must not begin with '[', which begins a section of the file")
    return text


type Many[Entry] = Annotated[list[Entry], FailFast()]
"""A list, of which the first entry that is wrong is told: there may be millions."""

Number = Annotated[float, Field(strict=True)]
"""A finite number; an integer will do, a truth value won't."""

Whole = Annotated[int, BeforeValidator(_whole), Field(strict=True)]
"""A whole number; a floating-point number without a fraction will do, a truth value won't."""

Line = Annotated[str, AfterValidator(_single_line)]
"""The end of a line of the file."""

OwnLine = Annotated[Line, AfterValidator(_no_mark)]
"""A name or title that stands on a line of its own."""
