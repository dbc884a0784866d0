"""The tables of settlements."""

from collections.abc import Iterable, Iterator, Mapping

from sembra.local.look.table import MINUS, Column, Name, Table, number
from sembra.local.pictures.settlements import Settlements, settlements_of
from sembra.local.results import ResultFile

_TIME, _SETTLEMENT, _RESIDUAL = "Time", "Settlement", "Residual settlement"
"""Columns of residual settlements."""

SMALL = 0.1
"""Settlements [m] below which a table has more decimals."""


def settlements(results: ResultFile) -> Iterator[Table]:
    """Yield the tables of settlements that a result file has."""
    try:
        found = settlements_of(results)
    except ValueError:
        return
    places = _places(results)
    yield _final(found, places)
    times = results.residual_times
    for title, header in (
        ("Settlement at the times asked for", _SETTLEMENT),
        ("Residual settlement after these times", _RESIDUAL),
    ):
        if any(table.get(header) for table in times.values()):
            yield _by_time(title, header, times, places)


def _places(results: ResultFile) -> dict[int, str]:
    """Return where each vertical stands."""
    places = {}
    for vertical, result in results.vertical_results.items():
        x = result["coordinates"].get("x")
        places[vertical] = f"{vertical}" if x is None else f"{vertical} at x = {number(x)} m"
    return places


def _final(found: Mapping[int, Settlements], places: Mapping[int, str]) -> Table:
    steps = max(len(settlements.by_load) for settlements in found.values())
    columns = [Column("Vertical", numbers=False)]
    columns += [Column(f"load step {step}", "m") for step in range(1, steps)]
    columns += [Column("all" if steps > 1 else "Settlement", "m")]
    decimals = _decimals(s for settlements in found.values() for s in settlements.total)
    rows: list[list[Name | str]] = []
    for vertical, settlements in found.items():
        last = [by_load[-1] for by_load in settlements.by_load]
        absent = [""] * (steps - len(last))
        *before, all_of_them = (_metres(settlement, decimals) for settlement in last)
        rows.append([Name(places[vertical]), *before, *absent, all_of_them])
    end = max(settlements.times[-1] for settlements in found.values())
    note = "Each load step with those before it." if steps > 1 else ""
    return Table(f"Settlement of the surface on day {number(end)}", columns, rows, note)


def _by_time(
    title: str,
    header: str,
    tables: Mapping[int, Mapping[str, list[float]]],
    places: Mapping[int, str],
) -> Table:
    times = sorted({time for table in tables.values() for time in table.get(_TIME, [])})
    columns = [Column(f"day {number(time)}", "m") for time in times]
    decimals = _decimals(s for table in tables.values() for s in table.get(header, []))
    rows: list[list[Name | str]] = []
    for vertical, table in tables.items():
        at = dict(zip(table[_TIME], table.get(header, []), strict=False))
        cells = [_metres(at[time], decimals) if time in at else "" for time in times]
        rows.append([Name(places.get(vertical, f"{vertical}")), *cells])
    return Table(title, [Column("Vertical", numbers=False), *columns], rows)


def _decimals(settlements: Iterable[float]) -> int:
    """Return how many decimals a table has: millimetres, and more for samples of a laboratory."""
    return 3 if max(map(abs, settlements), default=0.0) >= SMALL else 5


def _metres(settlement: float, decimals: int) -> str:
    return f"{settlement:.{decimals}f}".replace("-", MINUS)
