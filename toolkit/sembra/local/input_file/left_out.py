"""What an input file says and a model can't hold."""

from dataclasses import dataclass
from enum import StrEnum


class Reason(StrEnum):
    """Why a model can't hold something; the value says it in plain words."""

    NO_KEY = "the document of a model has no key for it"
    ONE_DIMENSION = "a one-dimensional model has no such thing"
    KIND_OF_LOAD = "a model has uniform loads and loads under polylines"
    SWITCHED_OFF = "the option that it belongs to is off, and a model says nothing of it then"
    OTHER_DRAIN = "drains of this type and schedule don't use it"
    IDENTIFICATION = "the metadata of a model hold no date and no time"
    UNUSED = "nothing in the model refers to it"
    WHOLE_DAYS = "times of a model are whole days"
    END_TIME = "a model has a load that stays end when it comes, or later"
    REFUSED = "a model refuses it"


@dataclass(frozen=True)
class LeftOut:
    """One thing that a file says and a model can't hold.

    Args:
        section: The section of the file that it stands in, without brackets, or "header".
        line: Its line of the file, counted from 1.
        what: What it is about, such as "Submerging" or 'the water load "Lowering"'.
        value: What the file says, as it stands there.
        instead: What the file of the model says in its place; empty if that has nothing there.
        reason: Why.
        message: What the model says itself, where it refuses it.
    """

    section: str
    line: int
    what: str
    value: str
    instead: str
    reason: Reason
    message: str = ""

    def __str__(self) -> str:
        """Return the whole as a sentence."""
        if self.instead:
            told = f"{self.what} is {self.value}, in the model's file {self.instead}"
        else:
            value = f" ({self.value})" if self.value else ""
            told = f"{self.what}{value} is missing in the model's file"
        message = f": {self.message.rstrip('.')}" if self.message else ""
        return f"[{self.section}], line {self.line}: {told}; {self.reason}{message}."
