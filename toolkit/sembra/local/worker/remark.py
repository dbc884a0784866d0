"""What the user of a calculation should know, in one sentence for all that it concerns."""

from collections.abc import Iterable
from dataclasses import dataclass, replace

from sembra.local.worker.failures import named


@dataclass(frozen=True)
class Remark:
    """What can be said of one thing as of several, which its sentence begins with.

    Args:
        kind: What they are, in the singular.
        names: Their names, at least one.
        verb: What they do, in the plural.
        what: The rest, without the full stop, in words that fit one and several.
    """

    kind: str
    names: tuple[str, ...]
    verb: str
    what: str

    def __str__(self) -> str:
        return f"{named(self.kind, self.names, self.verb)} {self.what}."


def sentences(remarks: Iterable[Remark | str]) -> list[str]:
    """Return each remark once as whole sentences, those alike but for their names as one.

    Args:
        remarks: The remarks, those that are sentences already among them.
    """
    found: dict[Remark | str, list[str]] = {}
    for remark in remarks:
        if isinstance(remark, Remark):
            found.setdefault(replace(remark, names=()), []).extend(remark.names)
        else:
            found.setdefault(remark, [])
    return [
        str(replace(one, names=tuple(dict.fromkeys(names)))) if isinstance(one, Remark) else one
        for one, names in found.items()
    ]
