"""Settlement of ground with drains: from the input file, or the model, to the results."""

import numpy as np
import pytest
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    Metadata,
    Model1D,
    VerticalDrain,
)

from tests.toolkit.worker.drain_section import SIMPLE, with_drains
from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.input_section import two_dimensional
from tests.toolkit.worker.published_results import KOPPEJAN
from tests.toolkit.worker.result_file import verticals

CLAY = {"Clay": {"SoilDrained": 0, "SoilCv": 1e-8}}
PLAIN = input_text(soils=CLAY, phreatic_level=-0.5, end=5000)
START = (" 1.000 = Start", " 0.000 = Start")
DEEP = ("-3.000 = Bottom", "-4.000 = Bottom")
HEAD = ("-1.500 = Water head", "-0.500 = Water head")


def history(text: str) -> tuple[np.ndarray, np.ndarray]:
    """Return times, and the settlement of the surface by all load steps."""
    times, *settlements = verticals(calculated(text))[0]["per_load"]
    return np.array(times), np.array(settlements[-1])


def at(text: str, time: float) -> float:
    return float(np.interp(time, *history(text)))


def test_drains_hasten_settlement_and_leave_its_end() -> None:
    times, plain = history(PLAIN)
    drained_times, drained = history(with_drains(PLAIN, START))
    assert drained_times.tolist() == times.tolist()
    assert np.all(drained[1:] > plain[1:])
    slow, fast = (
        history(text.replace("5000 = End", "9000000 = End"))[1][-1]
        for text in (PLAIN, with_drains(PLAIN, START))
    )
    assert fast == pytest.approx(slow, rel=1e-4)


def test_drains_start_late() -> None:
    late = with_drains(PLAIN, (" 1.000 = Start", "50.000 = Start"))
    times, settlements = history(late)
    assert 50.0 in times
    plain = np.interp(times, *history(PLAIN))
    early = times <= 50
    assert settlements[early] == pytest.approx(plain[early], rel=2e-2)
    assert at(late, 100.0) > 1.1 * at(PLAIN, 100.0)


def test_beside_the_drains_less_drains_away_with_the_distance() -> None:
    text = two_dimensional().replace("SoilDrained=1", "SoilDrained=0")
    # Verticals stand at 10, 20.5 and 90.
    among = ("      10.000 = Position of the r", "      20.500 = Position of the r")
    level = ("-0.500 = Phreatic", " 0.000 = Phreatic")
    plain = verticals(calculated(text))
    drained = verticals(calculated(with_drains(text, among, START, level)))
    hastened = []
    for without, among_them in zip(plain, drained, strict=True):
        times, *_, settlements = among_them["per_load"]
        before = np.interp(times[1:-1], without["per_load"][0], without["per_load"][-1])
        hastened.append(float((np.array(settlements[1:-1]) / before - 1).max()))
    # The last vertical stands 69.5 m beside them.
    assert hastened[0] > 0.1
    assert hastened[1] == pytest.approx(hastened[0], rel=0.2)
    assert 0 < hastened[2] < 0.01 * hastened[0]


def test_dewatering_is_a_load_that_comes_and_goes() -> None:
    text = with_drains(PLAIN, SIMPLE, START, HEAD, ("  90.000 = End", "2000.000 = End"), DEEP)
    plain_steps = verticals(calculated(PLAIN))[0]["counts"][1]
    assert verticals(calculated(text))[0]["counts"][1] == plain_steps + 2
    idle = with_drains(PLAIN, START, DEEP)
    assert at(text, 10.0) == pytest.approx(at(idle, 10.0), rel=2e-3)
    assert at(text, 100.0) > 1.1 * at(idle, 100.0)
    # Afterwards the soil swells, along a stiffer line than it was compressed.
    gain = [at(text, time) - at(idle, time) for time in (2000.0, 5000.0)]
    assert 0 < gain[1] < gain[0]


def by_kind(text: str) -> list[float]:
    """Return settlement by kind of the one layer: primary and secular swelling, below, above."""
    (rows,) = KOPPEJAN.findall(calculated(text))
    return [float(value) for value in rows.split()[1:]]


def test_kinds_of_settlement_count_dewatering() -> None:
    heavy = input_text(soils=CLAY, phreatic_level=-0.5, end=5000, loads=[("Fill", 0, 20, 5.0, 0.0)])
    for_good = with_drains(heavy, SIMPLE, START, HEAD, DEEP, ("  90.000 = End", "9999.000 = End"))
    _, _, below, below_later, above, above_later = by_kind(with_drains(heavy, START, DEEP))
    lowered = by_kind(for_good)
    assert lowered[:4] == pytest.approx([0, 0, below, below_later], abs=1e-7)
    primary, secular = lowered[4] - above, lowered[5] - above_later
    # All stresses are beyond the preconsolidation pressure then: Cp' = 12.5 and Cs' = 75.
    assert primary > 0.01
    assert primary / secular == pytest.approx(75 / 12.5, rel=1e-4)
    # When the water comes back, the soil swells by as much of ln(s), with Ap = 40 and As = 250.
    there_and_back = by_kind(with_drains(heavy, SIMPLE, START, HEAD, DEEP))
    swelling = [-primary * 12.5 / 40, -secular * 75 / 250]
    assert there_and_back == pytest.approx([*swelling, *lowered[2:]], abs=2e-7)


def test_stresses_with_dewatering() -> None:
    text = with_drains(PLAIN, SIMPLE, START, ("    90.000 = End", " 99999.000 = End"))
    found = verticals(calculated(text))[0]
    plain = verticals(calculated(PLAIN))[0]
    total, water, plain_water = (
        np.array(results["stresses"][f"Final {kind} stress"])
        for results, kind in ((found, "total"), (found, "water"), (plain, "water"))
    )
    for results in (found, plain):
        last = list(results["at_time"].values())[-1]
        assert total - water == pytest.approx(np.array(last["Loading"]), abs=1e-6)
    assert np.all(water > plain_water + 1.0)
    assert found["stresses"]["Initial water stress"] == plain["stresses"]["Initial water stress"]


def drain(kind: DrainType) -> VerticalDrain:
    return VerticalDrain(
        kind,
        0.0,
        0.0,
        -10.0,
        1.5,
        0.1,
        thickness=0.004,
        position_drain=-2.0,
        grid=DrainGrid.TRIANGULAR,
        start_of_drainage=0.0,
        phreatic_level_in_drain=-1.0,
        schedule=DrainageSimpleMode(
            20.0, 1000.0, 0.0, -2.0 if kind != DrainType.SAND_WALL else 0.0
        ),
    )


def settled(vertical_drain: VerticalDrain | None) -> float:
    """Settlement at 50 days of a model that goes through the service and the worker."""
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN,
        ConsolidationModel.TERZAGHI,
        create_default_materials=False,
        vertical_drain=vertical_drain,
        end_of_settlement_calculation=1000,
    )
    model.create_material(
        "Clay",
        15.0,
        15.0,
        drained=0,
        cv=2e-8,
        cp=50.0,
        cp1=15.0,
        cs=1e6,
        cs1=1e6,
        ap=50.0,
        asec=1e6,
        precon_koppejan_type=0,
        ocr=1.0,
        permeability_hor_factor=2.0,
    )
    model.update_geometry(-10.0, [(0.0, "Clay")], phreatic_level=-1.0)
    model.create_uniform_load("Fill", 0, 20.0, 2.0, 0.0)
    file = model.generate_input_file(Metadata(file_name="drains.sli"))
    return at(file.read().decode(), 50.0)


def test_models_with_each_type_of_drain() -> None:
    without, strip, column, wall = (
        settled(drain(kind) if kind is not None else None) for kind in (None, *DrainType)
    )
    # A wall drains from all its length, and a column of 10 cm is wider than a strip of 10 cm.
    assert without < strip < column < wall
