"""The result file: written, then read back by the patterns of its readers."""

from io import StringIO

import pytest
from sembra.external.dsettlement import OutputFileParser

from tests.toolkit.worker.input_file import calculated, input_text
from tests.toolkit.worker.result_file import (
    DRAINED,
    FILE_NAME,
    LEAKAGES,
    residuals,
    verticals,
)

LOADS = [
    ("weight", -1, 10.0, 1.0, 0.0),
    ("first", 0, 20.0, 1.0, 0.0),
    ("with it", 0, 5.0, 1.0, 0.0),
    ("second", 10, 20.0, 1.0, 0.0),
]
TEXT = input_text(loads=LOADS, times=[0, 5, 10000], phreatic_level=-1.0, bottom=-2.0)
RESULT = calculated(TEXT)
VERTICAL = verticals(RESULT)[0]


def test_counts_are_those_of_the_rows() -> None:
    time_steps, load_steps = VERTICAL["counts"]
    time, *loads = VERTICAL["per_load"]
    assert (time_steps, load_steps) == (len(time), len(loads)) == (len(time), 2)
    assert time[0] == 0.0
    assert time[-1] == 10000.0
    assert 5.0 in time


def test_first_column_is_the_first_load_alone() -> None:
    time, first, both = VERTICAL["per_load"]
    at = time.index(10.0)
    assert first[: at + 1] == both[: at + 1]
    assert all(less < more for less, more in zip(first[at + 1 :], both[at + 1 :], strict=True))


def test_without_initial_loads_the_first_step_changes_nothing() -> None:
    vertical = verticals(calculated(input_text()))[0]
    assert vertical["counts"][1] == 2
    assert set(vertical["per_load"][1]) == {0.0}
    assert vertical["per_load"][2][-1] > 0


def test_without_any_load_nothing_settles() -> None:
    text = calculated(input_text(loads=[], times=[0, 10]))
    vertical = verticals(text)[0]
    assert vertical["counts"][1] == 1
    assert set(vertical["per_load"][1]) == {0.0}
    assert residuals(text)[1]["Part of final settlement"] == [0.0, 0.0]


def test_stresses_are_full() -> None:
    stresses = VERTICAL["stresses"]
    assert list(stresses) == [
        "Initial total stress",
        "Initial water stress",
        "Final pre consolidation stress",
        "Final total stress",
        "Final water stress",
    ]
    assert {len(column) for column in stresses.values()} == {len(VERTICAL["depths"])}
    initial = stresses["Initial total stress"][-1] - stresses["Initial water stress"][-1]
    final = stresses["Final total stress"][-1] - stresses["Final water stress"][-1]
    assert initial == pytest.approx(10 + 15 + 18 - 10)
    assert final == pytest.approx(initial + 45)


def test_every_time_has_a_block() -> None:
    time, *_, settlement = VERTICAL["per_load"]
    blocks = VERTICAL["at_time"]
    assert list(blocks) == pytest.approx(time, abs=1e-7)
    assert [block["Settlement"][0] for block in blocks.values()] == settlement
    assert all(block["Settlement"][-1] == 0.0 for block in blocks.values())
    last = blocks[10000.0]
    assert last["Settlement"] == sorted(last["Settlement"], reverse=True)
    assert last["Loading"][-1] == pytest.approx(33 + 45)


def test_residual_settlements() -> None:
    rows = residuals(RESULT)[1]
    final = VERTICAL["per_load"][-1][-1]
    assert list(rows) == ["Time", "Settlement", "Part of final settlement", "Residual settlement"]
    assert rows["Time"] == [0, 5, 10000]
    assert rows["Settlement"][0] == 0.0
    assert rows["Settlement"][2] == final
    assert rows["Residual settlement"][1] == pytest.approx(final - rows["Settlement"][1], abs=2e-7)
    part = 100 * rows["Settlement"][1] / final
    assert rows["Part of final settlement"] == pytest.approx([0, part, 100], abs=1e-4)


def test_blocks_that_the_method_does_not_have() -> None:
    assert not LEAKAGES.search(RESULT)
    assert not DRAINED.search(RESULT)


def test_heading_and_echo_of_the_input() -> None:
    name = FILE_NAME.search(RESULT)
    assert name
    assert name["path"] == "C:\\projects\\dike.sld"
    assert "COMPANY    : Soil and Sons\n" in RESULT
    assert "CREATED BY : Sembra local worker\n" in RESULT
    data = TEXT[TEXT.index("[INPUT DATA]") : TEXT.index("[END OF INPUT FILE]")]
    assert data in RESULT


def test_line_ends_follow_the_input() -> None:
    with_crlf = calculated(TEXT.replace("\n", "\r\n"))
    assert with_crlf.replace("\r\n", "\n") == RESULT
    assert with_crlf.count("\r") == with_crlf.count("\n") == RESULT.count("\n")
    assert verticals(with_crlf) == [VERTICAL]
    assert residuals(with_crlf) == residuals(RESULT)


def test_same_input_gives_same_bytes() -> None:
    assert calculated(TEXT) == RESULT


def test_settlement_after_consolidation_depends_on_drainage() -> None:
    slow = verticals(calculated(input_text(soils={"Clay": {"SoilDrained": 0}})))[0]
    fast = verticals(calculated(input_text()))[0]
    time, *_, slow_history = slow["per_load"]
    fast_history = fast["per_load"][-1]
    assert all(s < f for s, f in zip(slow_history[1:30], fast_history[1:30], strict=True))
    assert slow_history[-1] == pytest.approx(fast_history[-1], rel=0.01)
    assert time[-1] == 10000


def test_dissipation_of_every_layer_from_the_lowest() -> None:
    text = calculated(
        input_text(
            layers=[(0.0, "Clay"), (-2.0, "Sand")],
            soils={"Clay": {"SoilDrained": 0}, "Sand": {}},
            options={"Dissipation": 1},
        )
    )
    block = text.partition("[Dissipation in Layers]\n")[2].partition("[End of Dissipation in")[0]
    lowest, upper = (
        [float(row.split()[1]) for row in part.split("\n")[2:] if row.strip()[:1].isdigit()]
        for part in block.split("[Dissipation layer]")[1:]
    )
    assert set(lowest[1:]) == {1.0}
    assert 0 < upper[1] < 0.5 < upper[-1]
    assert text.index("[END OF RESIDUAL SETTLEMENTS]") < text.index("[Dissipation in Layers]")


@pytest.mark.parametrize("level", [-0.35, -1.0])
def test_a_load_below_the_surface_leaves_what_lies_above(level: float) -> None:
    loads = [("weight", -1, 10.0, 1.0, 0.0), ("Fill", 0, 20.0, 1.0, level)]
    vertical = verticals(calculated(input_text(loads=loads, bottom=-2.0)))[0]
    last = vertical["at_time"][10000.0]
    first = vertical["at_time"][0.0]
    for depth, before, after in zip(
        vertical["depths"], first["Loading"], last["Loading"], strict=True
    ):
        assert after - before == pytest.approx(20.0 if depth <= level else 0.0)


@pytest.mark.parametrize(("times", "blocks"), [([10, 100], 2), ([], 1)])
def test_residual_settlements_stand_behind_the_dissipation_again(
    times: list[float], blocks: int
) -> None:
    text = calculated(input_text(options={"Dissipation": 1}, times=times))
    assert text.count("[END OF RESIDUAL SETTLEMENTS]\n") == blocks
    read = OutputFileParser(StringIO(text)).residual_times
    assert [rows["Time"] for rows in read.values()] == ([times] if times else [])
