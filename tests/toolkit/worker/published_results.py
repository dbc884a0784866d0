"""Published results as a calculation would hand them to the writer of result files."""

import re
from collections.abc import Iterator, Mapping
from io import StringIO
from typing import Any

import numpy as np
from sembra.local.results import ResultFile
from sembra.local.worker.arrays import Floats
from sembra.local.worker.column_result import (
    ColumnResult,
    DarcyHistory,
    TerzaghiStresses,
)
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import Mesh
from sembra.local.worker.soil_models.layer_settlement import LayerSettlement, SettlementParts

KOPPEJAN = re.compile(r"Layer seperation count \r?\n(.*?)\[End of Koppejan", re.DOTALL)


def published_results(text: str) -> Iterator[ColumnResult]:
    """Read the verticals of a result file back into results, without their dissipation."""
    verticals = ResultFile(StringIO(text, newline="")).vertical_results
    koppejan = KOPPEJAN.findall(text)
    for number, vertical in verticals.items():
        yield _result(vertical, _layers(koppejan[number - 1]) if koppejan else None)


def _result(
    vertical: Mapping[str, Any], layer_settlements: tuple[LayerSettlement, ...] | None
) -> ColumnResult:
    history = vertical["vertical_data"]
    depths = np.array(vertical["depths"])
    columns = {
        header: np.array([table[header] for table in history.values()])
        for header in next(iter(history.values()))
    }
    per_load = vertical["time_settlement_per_load"]
    return ColumnResult(
        column=Column(vertical["coordinates"]["x"], vertical["coordinates"]["z"], (), 0.0),
        mesh=Mesh(depths, np.zeros(len(depths), dtype=np.intp)),
        times=np.array(list(history)),
        settlements=columns["Settlement"],
        consolidation=_consolidation(vertical, columns),
        load_settlements=_loads(per_load) if per_load else None,
        layer_settlements=layer_settlements,
        dissipation=None,
    )


def _loads(per_load: Mapping[str, Any]) -> Floats:
    count = per_load["load_step_count"]
    return np.array([per_load[f"load_{number}"] for number in range(1, count + 1)]).T


def _consolidation(
    vertical: Mapping[str, Any], columns: Mapping[str, Floats]
) -> TerzaghiStresses | DarcyHistory:
    stresses = {header: np.array(values) for header, values in vertical["stresses"].items()}
    if stresses:
        preconsolidation = stresses.get("Final pre consolidation stress")
        return TerzaghiStresses(
            stresses["Initial total stress"],
            stresses["Initial water stress"],
            stresses["Final total stress"],
            stresses["Final water stress"],
            columns["Loading"],
            None if preconsolidation is None else preconsolidation[:-1],
        )
    return DarcyHistory(
        columns["Initial Stress"][0],
        columns["Effective stress vertical"],
        columns["Hydraulic head"],
        columns["Loading"],
        columns["Upper amplitude convolution"][:, :-1],
        columns["Lower amplitude convolution"][:, :-1],
        columns["Normalized consolidation coefficient"][:, :-1],
        np.array(vertical["leakages"]),
        np.array(vertical["drained_layers"]) == 1,
    )


def _layers(block: str) -> tuple[LayerSettlement, ...]:
    rows = [[float(field) for field in row.split()[1:]] for row in block.splitlines() if row]
    return tuple(
        LayerSettlement(SettlementParts(*row[::2]), SettlementParts(*row[1::2]))
        for row in reversed(rows)
    )
