"""Results as data frames: tidy ones, one row per place and time, one column per quantity."""

from collections.abc import Iterable, Mapping, Sequence
from typing import TYPE_CHECKING, Any

if TYPE_CHECKING:
    from pandas import DataFrame

    from sembra.local.results.dissipation import LayerDissipation

Verticals = Mapping[int, Mapping[str, Any]]
"""What `OutputFileParser.vertical_results` gives."""

Columns = Mapping[str, object]

BESIDE_THE_LOADS = ("load_step_count", "time_step_count")


def verticals(results: Verticals) -> "DataFrame":
    """Return one row per vertical."""
    return _stacked(
        ["vertical", "x", "z"],
        (
            {"vertical": [number], **_each_in_list(v["coordinates"])}
            for number, v in results.items()
        ),
    )


def settlements(results: Verticals) -> "DataFrame":
    """Return one row per vertical and time."""

    def columns(block: Mapping[str, Any]) -> Columns:
        return {name: values for name, values in block.items() if name not in BESIDE_THE_LOADS}

    return _stacked(
        ["vertical", "time"],
        (
            {"vertical": number, **columns(vertical["time_settlement_per_load"])}
            for number, vertical in results.items()
            if vertical["time_settlement_per_load"]
        ),
    )


def residuals(results: Mapping[int, Mapping[str, Sequence[float]]]) -> "DataFrame":
    """Return one row per vertical and time."""
    return _stacked(
        ["vertical"], ({"vertical": number, **table} for number, table in results.items())
    )


def stresses(results: Verticals) -> "DataFrame":
    """Return one row per vertical and node."""
    return _stacked(
        ["vertical", "depth"],
        (
            {"vertical": number, "depth": vertical["depths"], **vertical["stresses"]}
            for number, vertical in results.items()
            if vertical["stresses"]
        ),
    )


def time_dependent(results: Verticals) -> "DataFrame":
    """Return one row per vertical, time and node."""
    return _stacked(
        ["vertical", "time", "depth"],
        (
            {"vertical": number, "time": time, "depth": vertical["depths"], **table}
            for number, vertical in results.items()
            for time, table in vertical["vertical_data"].items()
        ),
    )


def elements(results: Verticals) -> "DataFrame":
    """Return one row per vertical and element, which lies between two nodes."""
    return _stacked(
        ["vertical", "top", "bottom", "leakage", "drained"],
        (
            {
                "vertical": number,
                "top": vertical["depths"][:-1],
                "bottom": vertical["depths"][1:],
                "leakage": vertical["leakages"],
                "drained": vertical["drained_layers"],
            }
            for number, vertical in results.items()
            if vertical["leakages"] or vertical["drained_layers"]
        ),
    )


def dissipation(layers: "Mapping[int, LayerDissipation]") -> "DataFrame":
    """Return one row per layer and time."""
    return _stacked(
        ["layer", "time", "degree"],
        ({"layer": number, **layer} for number, layer in layers.items()),
    )


def _each_in_list(values: Mapping[str, float]) -> Columns:
    return {name: [value] for name, value in values.items()}


def _stacked(first: Sequence[str], tables: Iterable[Columns]) -> "DataFrame":
    """Put tables below each other. Columns of other lengths are filled up with NaN.

    first: the columns that are there in any case, and stand in front.
    """
    try:
        import pandas as pd
    except ModuleNotFoundError as error:
        raise ModuleNotFoundError(
            "data frames need pandas, which is not installed: pip install pandas",
            name=error.name,
        ) from error
    frames = [
        pd.DataFrame(
            {
                name: pd.Series(values, dtype=float) if isinstance(values, list) else values
                for name, values in table.items()
            }
        )
        for table in tables
    ]
    if not frames:
        return pd.DataFrame({name: pd.Series(dtype=float) for name in first})
    stacked = pd.concat(frames, ignore_index=True)
    return stacked.reindex(columns=[*first, *(c for c in stacked.columns if c not in first)])
