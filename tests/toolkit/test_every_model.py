"""Whatever the classes of the module can describe is calculated, and none of it refused.

Models go through the public interface, the service and the worker. Dimension, soil model, kind of
consolidation and strain type are combined with all kinds of drains and schedules; what else a model
can say changes from one to the next, so that each of its values meets each of the others.
"""

from base64 import b64decode
from collections.abc import Callable, Iterator
from io import StringIO
from itertools import batched, cycle, islice, product, starmap
from math import isfinite
from typing import Any, Literal, NamedTuple

import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    Model1D,
    Model2D,
    OutputFileParser,
    VerticalDrain,
)
from sembra.local.worker.job import run_job

from tests.toolkit.worker.input_file import job

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


HEADS = (("deep", "deep", "water", 99), (99, "deep", "water", 99), ("deep", 0, 0, "deep"))
"""Pl-lines or codes at top and bottom of the sand, then of the clay."""

END = 10000


def drains() -> Iterator[VerticalDrain | None]:
    """Yield none, and each kind with each schedule; both meet each grid."""
    yield None
    grids = list(DrainGrid)
    for number, (kind, schedule) in enumerate(product(DrainType, SCHEDULES)):
        yield VerticalDrain(
            kind,
            20.0,
            60.0,
            -6.0,
            2.0,
            0.1,
            thickness=0.005,
            position_drain=-4.0,
            grid=grids[(number + number // 3) % 3],
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
    initial: Literal["none", "kept", "removed"]
    heads: tuple[str | int, ...]
    phreatic_level: float | None
    default_materials: bool
    profile_time: int
    removal: int
    cv: float = 2e-7


def turns(length: int, *values: Any) -> Iterator[Any]:
    """Yield values in turn, beginning anew after each length."""
    return cycle(islice(cycle(values), length))


def choices() -> Iterator[Choices]:
    """Yield choices whose parts go round at lengths without a common factor."""
    return starmap(
        Choices,
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
            turns(53, (), (100, 1000, 5000), (0,)),
            turns(29, "none", "kept", "removed"),
            turns(31, *HEADS),
            turns(37, -1.0, None),
            turns(41, True, False),
            turns(43, 50, END),
            turns(47, 300, END, END + 1000),
            strict=False,
        ),
    )


def material(choice: Choices) -> dict[str, Any]:
    return {
        "cv": choice.cv,
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


def one_dimensional(
    soil_model: CalculationModel,
    consolidation: ConsolidationModel,
    natural: bool,
    drain: VerticalDrain | None,
    choice: Choices,
) -> Model1D:
    model = Model1D(
        soil_model,
        consolidation,
        choice.default_materials,
        natural_strain=natural,
        maintain_profile=choice.maintain,
        end_of_settlement_calculation=END,
        vertical_drain=drain,
    )
    model.create_material("Soft clay", 14.0, 15.0, **material(choice))
    model.create_material("Coarse sand", 18.0, 20.0, **(material(choice) | {"drained": 1}))
    layers = [(0.0, "Soft clay"), (-5.0, "Coarse sand")]
    model.update_geometry(-8.0, layers, phreatic_level=choice.phreatic_level)
    if choice.initial != "none":
        model.create_uniform_load("Old fill", -1, 18.0, 0.6, 0.0)
    if choice.initial == "removed":
        model.create_uniform_load("Removal of the old", 200, -18.0, 0.4, 0.0)
    model.create_uniform_load("Terrain", 0, 18.0, 0.5, 0.0)
    model.create_uniform_load("Sand", 30, 18.0, 2.0, 0.0)
    model.create_uniform_load("Removal", 400, -18.0, 0.5, 0.0)
    model.set_calculation_times(*choice.times)
    return model


def two_dimensional(
    soil_model: CalculationModel,
    consolidation: ConsolidationModel,
    natural: bool,
    drain: VerticalDrain | None,
    choice: Choices,
) -> Model2D:
    model = Model2D(
        soil_model,
        consolidation,
        [(0.0, -8.0), (100.0, -8.0)],
        choice.default_materials,
        natural_strain=natural,
        maintain_profile=choice.maintain,
        profile_time=choice.profile_time,
        profile_unit_weight_above_phreatic_level=18.0,
        end_of_settlement_calculation=END,
        stress_distribution_loads=choice.simulate,
        vertical_drain=drain,
    )
    model.create_material("Soft clay", 14.0, 15.0, **material(choice))
    model.create_material("Coarse sand", 18.0, 20.0, **(material(choice) | {"drained": 1}))
    water, deep = (
        model.create_pl_line([model.create_point(x, y) for x in (0.0, 100.0)], is_phreatic=phreatic)
        for y, phreatic in ((-1.0, True), (-2.0, False))
    )
    lines: dict[str | int, Any] = {"water": water, "deep": deep, 0: 0, 99: 99}
    of_sand, of_clay = batched((lines[head] for head in choice.heads), 2)
    for top, name, heads in ((-5.0, "Coarse sand", of_sand), (0.0, "Soft clay", of_clay)):
        boundary = [model.create_point(x, top) for x in (0.0, 15.0, 55.0, 100.0)]
        model.create_layer(boundary, name, *heads)
    for x in (30.0, 65.0):
        model.create_vertical(x)
    outline = [(15.0, 0.0), (25.0, 3.0), (45.0, 3.0), (55.0, 0.0)]
    model.create_non_uniform_load("Dike", outline, 10, 9000, gamma_dry=17.0, gamma_wet=20.0)
    berm = [(25.0, 3.0), (30.0, 5.0), (40.0, 5.0), (45.0, 3.0)]
    model.create_non_uniform_load(
        "Surcharge", berm, 60, choice.removal, gamma_dry=17.0, temporary=choice.temporary
    )
    if choice.initial != "none":
        old = [(15.0, 0.0), (18.0, 0.6), (52.0, 0.6), (55.0, 0.0)]
        removed = choice.initial == "removed"
        model.create_non_uniform_load("Old fill", old, -1, 200, gamma_dry=17.0, temporary=removed)
        model.create_uniform_load("Old terrain", -1, 10.0, 0.3, 0.0)
    model.create_uniform_load("Terrain", 0, 10.0, 0.5, 0.0)
    model.set_calculation_times(*choice.times)
    return model


CASES = [
    pytest.param(
        make,
        (soil_model, consolidation, natural, drain, choice),
        id="-".join(
            (
                "1D" if make is one_dimensional else "2D",
                soil_model.name,
                consolidation.name,
                "natural" if natural else "linear",
                str(number),
            )
        ),
    )
    for number, ((make, soil_model, consolidation, natural, drain), choice) in enumerate(
        zip(
            (
                (make, soil_model, consolidation, natural, drain)
                for make, soil_model, consolidation, natural, drain in product(
                    (one_dimensional, two_dimensional),
                    CalculationModel,
                    ConsolidationModel,
                    (False, True),
                    list(drains()),
                )
                # The other soil models have a strain type of their own.
                if not natural or soil_model is CalculationModel.NEN_KOPPEJAN
            ),
            choices(),
            strict=False,
        )
    )
]


@pytest.mark.parametrize(("make", "arguments"), CASES)
def test_is_calculated(make: Callable[..., Model1D | Model2D], arguments: Any) -> None:
    model = make(*arguments)
    for surface in surface_settlements(model, dissipation=arguments[-1].dissipation):
        assert surface[0] == 0
        assert all(map(isfinite, surface))
        assert 0.0 < surface[-1] < 3.0


def surface_settlements(
    model: Model1D | Model2D, *, dissipation: bool = False
) -> list[list[float]]:
    """Return the settlement of the surface at each vertical, by time."""
    wanted = model.verticals[0] if dissipation else None
    text = model.generate_input_file(dissipation_calculation=wanted).getvalue().decode()
    result = run_job(job(text))
    assert result["error"] is None, result["error"]
    results = OutputFileParser(StringIO(b64decode(result["files"][".sld"]).decode()))
    assert len(results.vertical_results) == len(model.verticals)
    return [
        [histories[time]["Settlement"][0] for time in sorted(histories)]
        for histories in (one["vertical_data"] for one in results.vertical_results.values())
    ]


AT_ONCE = {"drained": 1}
SOON = {"drained": 0, "storage": 0, "cv": 1e-4}


@pytest.mark.parametrize("make", [one_dimensional, two_dimensional])
@pytest.mark.parametrize(
    ("soil_model", "natural"),
    [*product(CalculationModel, [False]), (CalculationModel.NEN_KOPPEJAN, True)],
)
@pytest.mark.parametrize("drainage", [AT_ONCE, SOON], ids=["at-once", "soon"])
@pytest.mark.parametrize("number", range(2))
def test_when_the_water_is_out_terzaghi_and_darcy_have_settled_the_same(
    make: Callable[..., Model1D | Model2D],
    soil_model: CalculationModel,
    natural: bool,
    drainage: dict[str, Any],
    number: int,
) -> None:
    """Kinds of consolidation tell when the ground settles, and only soil models how much."""
    choice = next(islice(choices(), number, None))._replace(simulate=False, **drainage)
    by_terzaghi, by_darcy = (
        [
            surface[-1]
            for surface in surface_settlements(
                make(soil_model, consolidation, natural, None, choice)
            )
        ]
        for consolidation in (ConsolidationModel.TERZAGHI, ConsolidationModel.DARCY)
    )
    assert by_darcy == pytest.approx(by_terzaghi, rel=0.01)
