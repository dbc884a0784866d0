"""Reading input files: what is accepted, and errors that name section and line."""

import numpy as np
import pytest
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.input import read_project

from tests.toolkit.worker.input_file import calculated, input_text, refused

GOOD = input_text(
    layers=[(1.5, "Soft Clay"), (-0.5, "Sand")],
    soils={"Soft Clay": {}, "Sand": {"SoilDrained": 0}},
    phreatic_level=0.25,
    times=[1, 4.5],
    options={"Precon. pressure within a layer": 5},
)


def test_what_the_file_holds() -> None:
    project = read_project(GOOD)
    (column,) = project.columns
    assert [(layer.top, layer.bottom) for layer in column.layers] == [(1.5, -0.5), (-0.5, -4.0)]
    assert [layer.material.name for layer in column.layers] == ["Soft Clay", "Sand"]
    assert [layer.material.drained for layer in column.layers] == [True, False]
    assert column.phreatic_level == 0.25
    assert project.loads[0].stress(0.0, 0.0, np.array([-1.0])) == 30.0
    assert project.residual_times == (1.0, 4.5)
    options = project.options
    assert options.preconsolidation is PreconsolidationOption.VARIABLE_CORRECTED_AT_EVERY_STEP
    assert (options.end, options.reference_time, options.water_unit_weight) == (10000, 1, 10)
    assert options.drained_top
    assert not options.natural_strain


@pytest.mark.parametrize("line_end", ["\r\n", "\r"])
def test_line_ends_make_no_difference(line_end: str) -> None:
    assert read_project(GOOD.replace("\n", line_end)) == read_project(GOOD)


def test_blanks_and_empty_lines_make_no_difference() -> None:
    loose = GOOD.replace("\n5\n", "\n\n  5   \n\n").replace("SoilCp=50.0", " SoilCp = 5.0E+0001 ")
    assert read_project(loose) == read_project(GOOD)


def line_of(text: str, part: str) -> int:
    return text[: text.index(part)].count("\n") + 1


@pytest.mark.parametrize(
    ("section", "old", "new", "problem"),
    [
        ("SOIL", "SoilCp=50.0", "SoilCp=fifty", 'SoilCp should be a number and is "fifty"'),
        ("SOIL", "SoilCp=50.0", "SoilCp=nan", "SoilCp should be a finite number and is nan"),
        ("SOIL", "SoilDrained=1", "SoilDrained=2", "SoilDrained should be 0 or 1 and is 2"),
        ("SOIL", "SoilPreconKoppejanType=1", "SoilPreconKoppejanType=7", "Type 7 is unknown"),
        ("WATER", "       10.00 = Unit", "        0.00 = Unit", "greater than zero"),
        ("GEOMETRY 1D DATA", "       -0.500\nSand", "        1.500\nSand", "not below that of"),
        ("GEOMETRY 1D DATA", "Sand\n5", "Silt\n5", 'the material "Silt" is unknown'),
        ("GEOMETRY 1D DATA", "       -4.000", "        4.000", "bottom level is not below"),
        ("OTHER LOADS", "0 20.0 1.5 0.0 = T", "0 20.0 1.5 = T", 'a number and is "="'),
        ("RESIDUAL TIMES", "\n4.5\n", "\n-1\n", "the time -1 lies before the calculation"),
        ("CALCULATION OPTIONS", "5 : Precon.", "6 : Precon.", "preconsolidation option 6 is"),
        ("CALCULATION OPTIONS", "10000 = End", "0 = End", "should lie after time 0"),
        ("CALCULATION OPTIONS", "1.000000000E+00 = Ref", "0 = Ref", "reference time should be"),
        (
            "MODEL",
            "0 : Strain type",
            "x : Strain type",
            'Strain type should be a number and is "x"',
        ),
    ],
)
def test_error_names_section_and_line(section: str, old: str, new: str, problem: str) -> None:
    assert GOOD.count(old) >= 1
    text = GOOD.replace(old, new)
    message = refused(text)
    assert f"in section [{section}], line " in message
    assert problem in message
    number = int(message.partition(", line ")[2].partition(":")[0])
    changed = line_of(text, new.strip("\n"))
    assert changed <= number <= changed + 1


@pytest.mark.parametrize(
    "name",
    [
        "INPUT DATA",
        "MODEL",
        "SOIL COLLECTION",
        "GEOMETRY 1D DATA",
        "VERTICALS",
        "WATER",
        "NON-UNIFORM LOADS",
        "OTHER LOADS",
        "CALCULATION OPTIONS",
        "RESIDUAL TIMES",
    ],
)
def test_missing_and_unclosed_sections(name: str) -> None:
    assert f"there is no section [{name}]" in refused(GOOD.replace(f"[{name}]", "[SOMETHING]"))
    message = refused(GOOD.replace(f"[END OF {name}]", ""))
    number = line_of(GOOD, f"[{name}]")
    assert f"in section [{name}], line {number}: the section is not closed." in message


@pytest.mark.parametrize("text", ["", "\0\1\2", "[INPUT DATA]", "no input file at all\n" * 100])
def test_other_files_are_refused(text: str) -> None:
    assert refused(text).startswith("The input file is not readable in section [INPUT")


def test_every_truncation_is_refused() -> None:
    lines = GOOD.splitlines(keepends=True)
    end = lines.index("[END OF INPUT DATA]\n")
    for count in range(0, end + 1, 7):
        assert refused("".join(lines[:count])).startswith("The input file is not readable")


def test_count_of_a_thousand_million_ends_at_the_end_of_the_section() -> None:
    assert "is missing" in refused(GOOD.replace("    1 = number of items\nFill", "1E9\nFill"))


def test_a_time_before_the_calculation_is_that_of_an_initial_load() -> None:
    assert refused(GOOD.replace("0 20.0 1.5 0.0 = T", "-2 20.0 1.5 0.0 = T")) == (
        'The load "Fill" comes at -2 days. That should be -1, for a load of the initial state, or '
        "not negative."
    )


def test_load_after_the_end() -> None:
    text = input_text(loads=[("Fill", 10, 20.0, 1.5, 0.0)], end=10)
    project = read_project(text)
    assert project.loads == ()
    assert [str(remark) for remark in project.remarks] == [
        'The load "Fill" comes when the calculation has ended, after 10 days, and so without '
        "effect."
    ]


@pytest.mark.parametrize("encoding", ["utf-8", "utf-8-sig", "cp1252"])
def test_names_keep_their_characters_in_the_result(encoding: str) -> None:
    # In the code page 85 is the ellipsis; elsewhere it ends a line, as U+2028 does.
    name = "T\u00e9\u00e9k \u20ac\u2026" + ("" if encoding == "cp1252" else "\u2028\u0085.")
    text = input_text(soils={name: {}}, layers=[(0.0, name)], loads=[(name, 0, 20.0, 1.5, 0.0)])
    result = calculated(text.encode(encoding))
    assert result.startswith("Dump file for D-Settlement")
    echo, data = (
        one.partition("[INPUT DATA]")[2].partition("[END OF INPUT DATA]")[0]
        for one in (result, text)
    )
    assert name in echo
    assert echo == data


def test_a_message_keeps_the_characters_of_names() -> None:
    text = input_text(loads=[("T\u00e9\u00e9k \u20ac", -2, 20.0, 1.5, 0.0)])
    for encoding in ("utf-8", "cp1252"):
        assert refused(text.encode(encoding)).startswith('The load "T\u00e9\u00e9k \u20ac" comes')


def test_names_may_be_empty() -> None:
    text = input_text(
        soils={"": {}}, layers=[(0.0, "")], loads=[("", 0, 20, 1, 0), ("", 1, 5, 1, 0)]
    )
    project = read_project(text)
    assert [load.name for load in project.loads] == ["", ""]
    assert project.columns[0].layers[0].material.name == ""


def test_a_profile_is_not_maintained_from_before_the_calculation() -> None:
    options = {"Maintain profile": 1, "Time superelevation": -5}
    assert "the time should not be negative: -5" in refused(input_text(options=options))
    assert read_project(input_text(options=options | {"Time superelevation": 0}))


def test_ground_without_layers_is_refused() -> None:
    message = refused(input_text(layers=[]))
    assert "in section [GEOMETRY 1D DATA], line " in message
    assert "there are no layers" in message
