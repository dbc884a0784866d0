"""Loads that depend on how the ground settles, against fixed points found by hand."""

from collections.abc import Callable
from dataclasses import replace
from functools import partial
from itertools import pairwise
from math import log10

import numpy as np
import pytest
from sembra.local.worker import calculation
from sembra.local.worker.column_result import DarcyHistory
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment
from sembra.local.worker.options import Superelevation
from sembra.local.worker.soil_models.isotache import Isotache

from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.weightless_soil import (
    DRY,
    END,
    SOFT,
    SOIL,
    TERRAIN,
    THICKNESS,
    WATER,
    WET,
    WIDE,
    calculated,
    effective_stress,
    fill,
    fixed_point,
    plate,
    project,
    surface_settlement,
    swelling,
    virgin,
)


def test_without_either_a_fill_settles_by_its_weight_at_once() -> None:
    (result,) = calculated(project(fill(3.0)))
    assert surface_settlement(result) == pytest.approx(virgin(TERRAIN, 3 * DRY, END))


def test_a_settlement_that_is_no_finite_number_is_refused() -> None:
    with (
        np.errstate(invalid="ignore"),
        pytest.raises(WorkerError, match="too large or too small to calculate with"),
    ):
        calculated(project(pressures=[plate(float("inf"))]))


# Submerging


@pytest.mark.parametrize("by_darcy", [False, True])
@pytest.mark.parametrize("height", [0.2, 1.0, 3.0])
def test_what_sinks_into_the_water_weighs_less_by_it(height: float, by_darcy: bool) -> None:
    def settlement(depth: float) -> float:
        wet = min(depth, height)
        return virgin(TERRAIN, (WET - WATER) * wet + DRY * (height - wet), END)

    (result,) = calculated(project(fill(height), submerging=True, by_darcy=by_darcy))
    expected = fixed_point(settlement, 0.0, 10.0)
    assert expected < 0.95 * settlement(0.0)
    assert surface_settlement(result) == pytest.approx(expected, abs=2e-7)


def test_a_thin_load_that_sinks_as_a_whole_weighs_what_it_weighs_in_water() -> None:
    thin = Embankment("Thin", 0.0, None, 80.0, 90.0, Polyline(((-WIDE, 0.2), (WIDE, 0.2))))
    (result,) = calculated(project(thin, submerging=True))
    expected = virgin(TERRAIN, 0.2 * (90.0 - WATER), END)
    assert expected > 0.2
    assert surface_settlement(result) == pytest.approx(expected)


def test_the_water_may_stand_below_the_surface() -> None:
    """The load comes under water by what it sinks deeper than the water stands."""
    level = -0.05
    # The soil above the water weighs nothing, and neither does the water that it doesn't hold.
    floating = material(dry=0.0, wet=WATER, drained=True, parameters=SOFT)

    def settlement(depth: float) -> float:
        wet = max(depth + level, 0.0)
        return virgin(TERRAIN, (WET - WATER) * wet + DRY * (3.0 - wet), END)

    columns = [column((THICKNESS, floating), water=level)]
    (result,) = calculated(project(fill(3.0), water_level=level, columns=columns, submerging=True))
    expected = fixed_point(settlement, 0.0, 10.0)
    assert expected > 2 * -level
    assert surface_settlement(result) == pytest.approx(expected, abs=2e-7)


def test_far_above_the_water_submerging_changes_nothing() -> None:
    heavy = [column((THICKNESS, material(drained=True)), water=-9.0)]
    temporary = fill(1.0, time=50.0, removal=300.0)
    sunk, unsunk = (
        calculated(
            project(fill(3.0), temporary, water_level=-9.0, columns=heavy, submerging=submerging)
        )[0]
        for submerging in (True, False)
    )
    assert sunk.settlements.tolist() == unsunk.settlements.tolist()
    assert effective_stress(sunk).tolist() == effective_stress(unsunk).tolist()


def test_a_pressure_does_not_sink() -> None:
    pressure = plate(48.0)
    assert pressure.submerged(lambda _: np.array(1.0)) is pressure
    (result,) = calculated(project(pressures=[plate(48.0)], submerging=True))
    assert surface_settlement(result) == pytest.approx(virgin(TERRAIN, 48.0, END))


@pytest.mark.parametrize("by_darcy", [False, True])
def test_each_column_sinks_by_its_own_settlement(by_darcy: bool) -> None:
    columns = [column((thickness, SOIL), x=x) for thickness, x in ((2.0, -5.0), (6.0, 5.0))]
    stated = project(fill(3.0), columns=columns, submerging=True, by_darcy=by_darcy)
    results = calculated(stated)

    def at_rest(thickness: float) -> float:
        def settlement(depth: float) -> float:
            return virgin(TERRAIN, (WET - WATER) * depth + DRY * (3 - depth), END, thickness)

        return fixed_point(settlement, 0.0, 3.0)

    expected = [at_rest(2.0), at_rest(6.0)]
    assert list(map(surface_settlement, results)) == pytest.approx(expected, abs=2e-7)


def test_the_first_of_two_fills_settles_alone_as_deep_in_the_water_as_both_have_sunk() -> None:
    stated = project(fill(3.0), fill(4.0, time=50.0), submerging=True, by_darcy=True)
    options = replace(stated.options, each_step_alone=True)

    def by_the_first(depth: float) -> float:
        return (WET - WATER) * depth + DRY * (3.0 - depth)

    def settlement(depth: float) -> float:
        first = by_the_first(depth)
        return virgin(TERRAIN, first, END) + virgin(TERRAIN + first, DRY, END - 50.0)

    depth = fixed_point(settlement, 0.0, 3.0)
    alone = virgin(TERRAIN, by_the_first(depth), END)
    (result,) = calculated(replace(stated, options=options))
    assert result.load_settlements is not None
    assert result.load_settlements[-1, -2:].tolist() == pytest.approx([alone, depth], abs=2e-7)


@pytest.mark.parametrize("by_darcy", [False, True])
def test_all_columns_whose_loads_do_not_come_to_rest_are_named(
    monkeypatch: pytest.MonkeyPatch, by_darcy: bool
) -> None:
    monkeypatch.setattr(calculation, "_MOST_REPETITIONS", 2)
    columns = [column((THICKNESS, SOIL), x=x) for x in (-5.0, 5.0)]
    with pytest.raises(WorkerError) as caught:
        calculated(project(fill(3.0), columns=columns, submerging=True, by_darcy=by_darcy))
    assert str(caught.value) == " ".join(
        f"The loads at x = {x} m don't come to rest as they sink into the water." for x in (-5, 5)
    )


@pytest.mark.parametrize("by_darcy", [False, True])
def test_all_of_a_temporary_load_goes_however_deep_it_has_sunk(by_darcy: bool) -> None:
    """It goes as it came: sunk by what the ground has settled in the end."""

    def settlement(depth: float) -> float:
        wet = max(depth, 0.0)
        pressure = (WET - WATER) * wet + DRY * (3.0 - wet)
        after = END - 300.0
        return virgin(TERRAIN, pressure, END) + swelling(TERRAIN + pressure, pressure, after)

    (result,) = calculated(project(fill(3.0, removal=300.0), submerging=True, by_darcy=by_darcy))
    assert effective_stress(result) == pytest.approx(TERRAIN)
    assert surface_settlement(result) == pytest.approx(fixed_point(settlement, 0, 3), abs=2e-7)


@pytest.mark.parametrize("by_darcy", [False, True])
@pytest.mark.parametrize("submerging", [False, True])
@pytest.mark.parametrize(("water_level", "weight"), [(0.0, 2 * DRY), (0.5, 1.5 * DRY + 4.5)])
def test_all_of_an_initial_load_goes_as_it_lay_there(
    by_darcy: bool, submerging: bool, water_level: float, weight: float
) -> None:
    """Initial loads keep their weight; what comes and what goes is the same pressure."""
    preload = fill(2.0, time=-1.0, removal=300.0)
    stated = project(
        preload,
        pressures=[plate(48.0)],
        water_level=water_level,
        submerging=submerging,
        by_darcy=by_darcy,
    )
    (result,) = calculated(stated)
    assert effective_stress(result) == pytest.approx(TERRAIN + 48)
    before = TERRAIN + weight
    expected = virgin(before, 48, END) + swelling(before + 48, weight, END - 300)
    assert surface_settlement(result) == pytest.approx(expected)


@pytest.mark.parametrize("time", [-1.0, 0.0, 20.0])
def test_nothing_stays_of_a_load_that_sinks_from_one_time_to_the_next(time: float) -> None:
    """Creep and Darcy: initial loads sink too, and what goes weighs what lies there."""
    soil = material(dry=WATER, wet=WATER, drained=True, parameters={"a": 0.02, "b": 0.3, "c": 0.01})
    stated = project(
        fill(2.0, time=time, removal=300.0),
        pressures=[plate(48.0)],
        columns=[column((THICKNESS, soil))],
        submerging=True,
        by_darcy=True,
    )
    (result,) = calculated(replace(stated, soil_model=Isotache))
    assert isinstance(result.consolidation, DarcyHistory)
    (before,) = np.flatnonzero(result.times == 300.0)
    depth = result.settlements[before - 1, 0]
    wet = result.consolidation.effective[before, 0] - TERRAIN - 48
    assert depth > 0.3
    assert wet == pytest.approx((WET - WATER) * depth + DRY * (2 - depth), rel=1e-2)
    assert effective_stress(result) == pytest.approx(TERRAIN + 48)


# Maintaining the profile


def repetitions(settlement: Callable[[float], float], tolerance: float) -> list[float]:
    """The settlements of all repetitions, each below a superelevation as high as the one before.

    One more follows the first that has changed by less than the tolerance.
    """
    found = [0.0, settlement(0.0)]
    while abs(found[-1] - found[-2]) >= tolerance:
        found.append(settlement(found[-1]))
    return [*found[1:], settlement(found[-1])]


def superelevated(height: float, time: float, thickness: float = THICKNESS) -> float:
    """Settlement by three metres of fill and by a superelevation, which comes some days later."""
    added = virgin(TERRAIN + 3 * DRY, 20.0 * height, END - time, thickness)
    return virgin(TERRAIN, 3 * DRY, END, thickness) + added


@pytest.mark.parametrize("tolerance", [1e-1, 1e-3, 1e-6])
@pytest.mark.parametrize("time", [0.0, 100.0])
def test_the_superelevation_is_as_high_as_the_settlement_before(
    time: float, tolerance: float
) -> None:
    option = Superelevation(time, 20.0, 20.0, tolerance)
    # The superelevation stands on the fill, three metres above the water.
    expected = repetitions(partial(superelevated, time=time), tolerance)
    assert expected[-1] > 1.02 * expected[0]
    (result,) = calculated(project(fill(3.0), superelevation=option))
    assert surface_settlement(result) == pytest.approx(expected[-1], rel=1e-9)
    assert result.superelevation == pytest.approx(2 * WIDE * expected[-2], rel=1e-9)


def test_its_weight_stands_among_the_stresses() -> None:
    option = Superelevation(100.0, 20.0, 20.0, 1e-6)
    (result,) = calculated(project(fill(3.0), superelevation=option))
    height = repetitions(partial(superelevated, time=100.0), 1e-6)[-2]
    assert effective_stress(result) == pytest.approx(TERRAIN + 3 * DRY + 20.0 * height)


def test_below_water_it_weighs_less_by_it() -> None:
    option = Superelevation(0.0, 20.0, 21.0, 1e-6)
    deep = project(fill(3.0), water_level=5.0, superelevation=option)
    (result,) = calculated(deep)
    expected = fixed_point(
        lambda height: virgin(TERRAIN, 3 * (WET - WATER) + (21.0 - WATER) * height, END), 0.0, 3.0
    )
    assert surface_settlement(result) == pytest.approx(expected, abs=1e-6)


def test_without_a_fill_there_is_no_superelevation() -> None:
    option = Superelevation(0.0, 20.0, 20.0, 1e-3)
    (result,) = calculated(project(pressures=[plate(48.0)], superelevation=option))
    assert surface_settlement(result) == pytest.approx(virgin(TERRAIN, 48, END))
    assert result.superelevation == 0.0


def test_ground_that_rises_gets_no_superelevation() -> None:
    option = Superelevation(0.0, 20.0, 20.0, 1e-3)
    relief = plate(-30.0)
    light = Embankment("Light", 0.0, None, 1.0, 1.0, fill(1.0).outline)
    (result,) = calculated(project(light, pressures=[relief], superelevation=option))
    assert surface_settlement(result) == pytest.approx(swelling(TERRAIN, 29.0, END))
    assert result.superelevation == 0.0


def thin_and_thick(*, reverse: bool = False) -> list[Column]:
    """Three columns of 2 m and three of 6 m: around the middle ones the settlement is even."""
    columns = [
        column((thickness, SOIL), x=middle + x)
        for thickness, middle in ((2.0, -500.0), (6.0, 500.0))
        for x in (-300.0, 0.0, 300.0)
    ]
    return columns[::-1] if reverse else columns


def test_verticals_in_reverse_order_settle_the_same() -> None:
    option = Superelevation(30.0, 20.0, 20.0, 1e-3)
    found, reverse = (
        calculated(
            project(fill(3.0), columns=thin_and_thick(reverse=reverse), superelevation=option)
        )
        for reverse in (False, True)
    )
    for one, other in zip(found, reversed(reverse), strict=True):
        assert other.column.x == one.column.x
        assert other.settlements.tolist() == one.settlements.tolist()
        assert other.superelevation == one.superelevation
    assert surface_settlement(found[-1]) > 2 * surface_settlement(found[0])


def test_each_vertical_is_superelevated_by_its_own_settlement() -> None:
    option = Superelevation(30.0, 20.0, 20.0, 1e-6)
    results = calculated(project(fill(3.0), columns=thin_and_thick(), superelevation=option))
    for result, thickness in ((results[1], 2.0), (results[4], 6.0)):
        settlement = partial(superelevated, time=30.0, thickness=thickness)
        expected = fixed_point(settlement, 0.0, 5.0)
        assert surface_settlement(result) == pytest.approx(expected, rel=5e-4)
    heights = [surface_settlement(result) for result in results]
    between = (300.0, 300.0, 400.0, 300.0, 300.0)
    parts = (
        width * (left + right) / 2
        for width, (left, right) in zip(between, pairwise(heights), strict=True)
    )
    area = sum(parts) + (WIDE - 800) * (heights[0] + heights[-1])
    assert [result.superelevation for result in results] == pytest.approx([area] * 6)


def test_the_vertical_that_settles_most_tells_when_to_stop() -> None:
    tolerance = 0.02
    thin, thick = (
        repetitions(partial(superelevated, time=0.0, thickness=thickness), tolerance)
        for thickness in (2.0, 6.0)
    )
    assert len(thick) > len(thin)
    option = Superelevation(0.0, 20.0, 20.0, tolerance)
    results = calculated(project(fill(3.0), columns=thin_and_thick(), superelevation=option))
    assert surface_settlement(results[4]) == pytest.approx(thick[-1], rel=5e-4)


def test_without_a_tolerance_it_rests_when_the_settlement_does() -> None:
    option = Superelevation(100.0, 20.0, 20.0, 0.0)
    (result,) = calculated(project(fill(3.0), superelevation=option))
    expected = fixed_point(partial(superelevated, time=100.0), 0.0, 5.0)
    assert surface_settlement(result) == pytest.approx(expected, abs=1e-7)


def yielding_ground() -> list[Column]:
    """Ground that settles by as much as is put on it, as long as that is little."""
    compliance = 1 / SOFT["cp1"] + log10(1 + END) / SOFT["cs1"]
    return [column((TERRAIN / 20.0 / compliance, SOIL))]


def test_a_profile_that_comes_to_rest_slowly_does_so() -> None:
    option = Superelevation(0.0, 20.0, 20.0, 1e-6)
    ground = yielding_ground()
    (result,) = calculated(project(fill(0.001), columns=ground, superelevation=option))

    def settlement(height: float) -> float:
        fill = DRY * 0.001 + 20.0 * height
        return virgin(TERRAIN, fill, END, ground[0].layers[0].thickness)

    expected = fixed_point(settlement, 0.0, 5.0)
    assert surface_settlement(result) == pytest.approx(expected, rel=1e-3)


def test_a_profile_that_does_not_come_to_rest_is_refused(monkeypatch: pytest.MonkeyPatch) -> None:
    monkeypatch.setattr(calculation, "_MOST_REPETITIONS", 2)
    option = Superelevation(0.0, 20.0, 20.0, 1e-6)
    with pytest.raises(WorkerError, match=r"can't be maintained: .* after 4 repetitions"):
        calculated(project(fill(0.001), columns=yielding_ground(), superelevation=option))


@pytest.mark.parametrize("maintained", [False, True])
def test_what_is_done_is_told_and_never_less_than_before(maintained: bool) -> None:
    told: list[float] = []
    option = Superelevation(0.0, 20.0, 20.0, 1e-3) if maintained else None
    columns = [column((THICKNESS, SOIL), x=x) for x in (-10.0, 10.0)]
    calculated(project(fill(3.0), columns=columns, superelevation=option), told.append)
    assert told == sorted(told)
    assert told[0] > 0.0
    assert told[-1] <= 1.0
    assert maintained or told == [0.5, 1.0]


def test_a_superelevation_sinks_with_the_loads_below_it() -> None:
    """Both at once: each repetition of the profile finds its own depth."""
    option = Superelevation(0.0, 20.0, 21.0, 1e-6)

    def at_rest(height: float) -> float:
        def settlement(depth: float) -> float:
            fill = (WET - WATER) * depth + DRY * (3.0 - depth)
            return virgin(TERRAIN, fill + 20.0 * height, END)

        return fixed_point(settlement, 0.0, 3.0)

    expected = fixed_point(at_rest, 0.0, 3.0)
    (result,) = calculated(project(fill(3.0), submerging=True, superelevation=option))
    assert surface_settlement(result) == pytest.approx(expected, abs=1e-6)
