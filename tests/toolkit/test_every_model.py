"""Whatever the classes of the module can describe is calculated, and none of it refused.

Models go through the public interface, the service and the worker. Dimension, soil model, kind of
consolidation and strain type are combined with all kinds of drains and schedules; what else a model
can say changes from one to the next, so that each of its values meets each of the others.
"""

from collections.abc import Iterator
from itertools import cycle, product
from typing import Any, NamedTuple

from sembra.external.dsettlement import (
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    VerticalDrain,
)

SCHEDULES: tuple[Any, ...] = (
    None,
    DrainageSimpleMode(10.0, 200.0, 20.0, -2.0),
    [(5.0, 10.0, -1.0), (50.0, 20.0, -2.0), (300.0, 0.0, -1.0)],
)
PRECONSOLIDATION = (
    {"precon_isotache_type": 0, "precon_koppejan_type": 0, "ocr": 1.4},
    {"precon_isotache_type": 1, "precon_koppejan_type": 1, "pc": 35.0},
    {"precon_isotache_type": 2, "precon_koppejan_type": 2, "pop": 8.0},
)
COMPRESSION = (
    {"comp_ratio": 1, "r_ratio": 0.04, "c_ratio": 0.25, "ca": 0.01},
    {"comp_ratio": 0, "cr_index": 0.1, "cc_index": 0.6, "ca": 0.0, "initial_void_ratio": 1.5},
)
CREEP = ({"sec_comp_rate": 0.006}, {"sec_comp_rate": 0.0})


def drains() -> Iterator[VerticalDrain | None]:
    yield None
    for kind, schedule in product(DrainType, SCHEDULES):
        yield VerticalDrain(
            kind,
            20.0,
            60.0,
            -6.0,
            2.0,
            0.1,
            thickness=0.005,
            position_drain=-4.0,
            grid=DrainGrid.TRIANGULAR,
            start_of_drainage=5.0,
            phreatic_level_in_drain=-1.5,
            schedule=schedule,
        )


class Choices(NamedTuple):
    """What a model says besides what it is."""

    preconsolidation: dict[str, Any]
    compression: dict[str, Any]
    creep: dict[str, Any]
    storage: int
    drained: int
    simulate: bool
    maintain: bool
    temporary: bool
    dissipation: bool
    times: tuple[int, ...]


def choices() -> Iterator[Choices]:
    """Yield choices whose parts go round at lengths without a common factor."""
    return map(
        Choices._make,
        zip(
            cycle(PRECONSOLIDATION),
            cycle((*COMPRESSION, *COMPRESSION, COMPRESSION[0])),
            cycle((*CREEP, *CREEP, *CREEP, CREEP[0])),
            cycle((0, 1, 2, 0)),
            cycle((0,) * 10 + (1,)),
            cycle((False,) * 7 + (True,) * 6),
            cycle((False,) * 9 + (True,) * 8),
            cycle((False,) * 10 + (True,) * 9),
            cycle((False,) * 12 + (True,) * 11),
            cycle(((), (100, 1000, 5000), (0,))),
            strict=False,
        ),
    )


def material(choice: Choices) -> dict[str, Any]:
    return {
        "cv": 2e-7,
        "permeability_ver": 1e-4,
        "permeability_hor_factor": 2.0,
        "permeability_strain_modulus": 0.2,
        "storage_type": choice.storage,
        "drained": choice.drained,
        "cp": 30.0,
        "cp1": 8.0,
        "cs": 250.0,
        "cs1": 80.0,
        "ap": 40.0,
        "asec": 300.0,
        "pri_comp_index": 0.02,
        "sec_comp_index": 0.12,
        **choice.creep,
        **choice.preconsolidation,
        **choice.compression,
    }
