"""All that is read from an input file."""

from __future__ import annotations

from dataclasses import dataclass

from .drains import Drains
from .model import Column, Load, Options


@dataclass(frozen=True)
class Project:
    """All that a calculation needs, one column for each vertical.

    `load_areas` holds the cross-sections in m² of the loads that have one.
    """

    columns: tuple[Column, ...]
    loads: tuple[Load, ...]
    options: Options
    residual_times: tuple[float, ...]
    load_areas: tuple[float, ...] = ()
    drains: Drains | None = None

    def drains_around(self, column: Column) -> Drains | None:
        """The drains, if the column stands among them."""
        return self.drains if self.drains and self.drains.surround(column.x) else None
