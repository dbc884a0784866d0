"""What stands on a page, but for the curves of its pictures."""

import re
from pathlib import Path

import pytest
from sembra.errors import ParsingError
from sembra.local.look import make_page
from sembra.local.look.page import read_page

from tests.toolkit.look.made_files import cross_section

Pair = tuple[Path, Path]
pytestmark = pytest.mark.usefixtures("no_curves")


def test_a_result_file_shows_its_input_too(pair: Pair) -> None:
    both, alone = read_page(*pair), read_page(pair[1])
    assert alone.tables == both.tables
    assert alone.options == both.options
    assert alone.settlements == both.settlements
    assert len(alone.drawings) == len(both.drawings)
    assert alone.ground


def test_the_tables_say_what_the_model_holds(column_pair: Pair) -> None:
    page = read_page(*column_pair)
    layers, soils, loads = page.tables
    assert [[getattr(cell, "text", cell) for cell in row] for row in layers.rows] == [
        ["<Clay & silt>", "0", "\N{MINUS SIGN}4", "4"],
        ["Sand layer", "\N{MINUS SIGN}4", "\N{MINUS SIGN}6", "2"],
    ]
    clay = next(row for row in soils.rows if getattr(row[0], "text", "") == "<Clay & silt>")
    assert clay[1:] == ["14", "15", "no", "1·10⁻⁷", "OCR 1", "30", "10", "300", "100", "1", "1"]
    assert [column.label for column in soils.columns][4:7] == ["cv", "Preconsolidation", "Cp"]
    assert loads.rows[0][1:] == [
        "uniform", "day 0", "27 kPa (1.5 m of 18 kN/m³)", "everywhere, at level 0 m",
    ]  # fmt: skip


def test_settlements_are_those_of_the_result_file(column_pair: Pair) -> None:
    final, at_times, residual = read_page(*column_pair).settlements
    [[_, settlement]] = [row[:1] + row[-1:] for row in map(list, final.rows)]
    values = [
        [float(str(cell)) for cell in list(table.rows[0])[1:]] for table in (at_times, residual)
    ]
    assert [column.label for column in at_times.columns] == [
        "Vertical", "day 10", "day 100", "day 1000",
    ]  # fmt: skip
    for now, later in zip(*values, strict=True):
        assert now + later == pytest.approx(float(str(settlement)), abs=1.1e-3)


def test_results_of_another_input_are_remarked(column_pair: Pair, tmp_path: Path) -> None:
    other = tmp_path / "other.sli"
    other.write_text(column_pair[0].read_text("utf-8").replace("18.00", "19.00"), "utf-8")
    assert read_page(other, column_pair[1]).remarks == [
        "The result file repeats another input than that of the input file."
    ]


def test_warnings_of_the_calculation_are_shown(column_pair: Pair, tmp_path: Path) -> None:
    text = column_pair[1].read_text("utf-8")
    end = "[End of Results]"
    warned = f"[Warnings]\n      1     number of warnings\nMind the gap.\n[End of Warnings]\n{end}"
    path = tmp_path / "warned.sld"
    path.write_text(text.replace(end, warned), "utf-8")
    assert read_page(path).remarks == ["Mind the gap."]


def test_a_malformed_section_leaves_the_others(column_pair: Pair, tmp_path: Path) -> None:
    path = tmp_path / "damaged.sli"
    path.write_text(column_pair[0].read_text("utf-8").replace("SoilGamDry=14", "SoilGamDry=x"))
    page = read_page(path)
    [remark] = page.remarks
    assert "in section [SOIL], line" in remark
    assert 'SoilGamDry should be a number and is "x.00"' in remark
    assert [table.title for table in page.tables] == ["Layers", "Loads"]
    assert page.options
    assert not page.ground


def changed(path: Path, folder: Path, *changes: tuple[str, str]) -> Path:
    """Write a file with other texts in it."""
    text = path.read_text("utf-8")
    for old, new in changes:
        assert old in text
        text = text.replace(old, new)
    other = folder / f"changed{path.suffix}"
    other.write_text(text, "utf-8")
    return other


def test_an_option_that_no_model_has_may_be_malformed(column_pair: Pair, tmp_path: Path) -> None:
    old = "0 : Fit for settlement plate = FALSE"
    page = read_page(changed(column_pair[0], tmp_path, (old, old.replace("0", "x", 1))))
    [remark] = page.remarks
    assert "in section [MODEL], line" in remark
    assert page.ground
    assert not page.options
    assert len(page.tables) == 3


def test_a_fit_for_a_settlement_plate_is_told(column_pair: Pair, tmp_path: Path) -> None:
    old = "0 : Fit for settlement plate = FALSE"
    page = read_page(
        changed(column_pair[0], tmp_path, (old, "1 : Fit for settlement plate = TRUE"))
    )
    assert ("Fit for a settlement plate", "asked for") in page.options


def test_ground_that_no_model_can_have_is_not_drawn(tmp_path: Path) -> None:
    model = cross_section()
    path = tmp_path / "made.sli"
    path.write_bytes(model.generate_input_file().getvalue())
    point = "        100.000          0.000          0.000"
    page = read_page(
        changed(path, tmp_path, (point, "         99.000          0.000          0.000"))
    )
    [remark] = page.remarks
    assert remark.startswith("There is no picture of the ground, since no model can be made: ")
    assert not page.ground
    assert [table.title for table in page.tables] == ["Layers", "Soils", "Loads"]


def test_loads_of_unknown_kinds_are_named(column_pair: Pair, tmp_path: Path) -> None:
    page = read_page(changed(column_pair[0], tmp_path, ("3 : Uniform", "7 : Tank")))
    loads = page.tables[-1]
    assert loads.rows == []
    assert loads.note.endswith("of kinds that aren't known: Fill (Tank).")


def test_circular_and_rectangular_loads_are_told(column_pair: Pair, tmp_path: Path) -> None:
    tanks = (
        "3 = number of items\n"
        "Tank\n1 : Circular\n 5 20.0 1.0 = Time\n 1 0 2 3 = Xcp, Ycp, Zcp, R\n"
        "Raft\n2 : Rectangular\n 0 30.0 0.5 = Time\n 1 0 2 4 6 = Xcp, Ycp, Zcp, xwidth, zwidth\n"
        "Fill\n3 : Uniform"
    )
    page = read_page(
        changed(column_pair[0], tmp_path, ("1 = number of items\nFill\n3 : Uniform", tanks))
    )
    assert [row[1:] for row in page.tables[-1].rows][:2] == [
        ["circular", "day 5", "20 kPa, α 1", "centre (1, 0, 2) m, radius 3 m"],
        ["rectangular", "day 0", "30 kPa, α 0.5", "centre (1, 0, 2) m, 4 m along x by 6 m along z"],
    ]  # fmt: skip


def test_results_without_settlements_leave_the_input(column_pair: Pair, tmp_path: Path) -> None:
    path = changed(
        column_pair[1],
        tmp_path,
        ("[Time-Settlement per Load]", "[Nothing]"),
        ("[Time-dependent Data]", "[Nothing]"),
    )
    page = read_page(path)
    assert (page.settlements, page.drawings) == ([], [])
    assert page.ground
    assert len(page.tables) == 3


def test_what_no_model_can_hold_is_listed(column_pair: Pair, tmp_path: Path) -> None:
    path = tmp_path / "short.sli"
    text = column_pair[0].read_text("utf-8")
    path.write_text(text.replace("10000 = End of", "1 = End of"))
    page = read_page(path)
    assert [one.what for one in page.left_out if one.section == "RESIDUAL TIMES"] == [
        "the time 10", "the time 100", "the time 1000",
    ]  # fmt: skip


@pytest.mark.parametrize("text", ["", "no file of the tool", "[INPUT DATA]\nand no more"])
def test_other_files_are_refused_by_name(text: str, column_pair: Pair, tmp_path: Path) -> None:
    path = tmp_path / "other.txt"
    path.write_text(text)
    refused = rf"{re.escape(str(path))} is no input or result file of D-Settlement"
    with pytest.raises(ParsingError, match=refused):
        make_page(path)
    with pytest.raises(ParsingError, match=refused):
        make_page(column_pair[0], path)


def test_a_result_file_without_results_is_refused_by_name(pair: Pair) -> None:
    with pytest.raises(ParsingError, match=rf"{re.escape(str(pair[0]))} has no results"):
        make_page(pair[0], pair[0])
