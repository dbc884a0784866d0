"""Models made here, read back from their files; and what a model can't hold."""

from collections.abc import Callable
from importlib import import_module
from pathlib import Path

import pytest
from sembra.core import Color
from sembra.errors import ModelError, ParsingError
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    Metadata,
    Model1D,
    Model2D,
    VerticalDrain,
)
from sembra.local.input_file import LeftOut, ReadModel, Reason, read_model
from sembra.local.service.document import RefusalError
from sembra.local.sli.whole_file import InputFile

from tests.toolkit.look.made_files import column, cross_section

Read = Callable[[str], ReadModel]

SIMPLE = DrainageSimpleMode(5.0, 80.0, 35.0, -2.0)
DETAILED = [(0.0, 10.0, -1.0), (30.0, 20.0, -2.5)]


@pytest.fixture
def read(tmp_path: Path) -> Read:
    """Read the model of a text."""

    def of_text(text: str) -> ReadModel:
        path = tmp_path / "file.sli"
        path.write_text(text, "utf-8")
        return read_model(path)

    return of_text


def generated(model: Model1D | Model2D, metadata: Metadata | None = None) -> str:
    return model.generate_input_file(metadata).getvalue().decode()


def changed(text: str, *changes: tuple[str, str]) -> str:
    for old, new in changes:
        assert text.count(old) == 1, old
        text = text.replace(old, new)
    return text


def told(read: ReadModel) -> list[tuple[str, str, str, Reason]]:
    return [(one.what, one.value, one.instead, one.reason) for one in read.left_out]


def with_options() -> Model2D:
    model = Model2D(
        CalculationModel.NEN_BJERRUM,
        ConsolidationModel.DARCY,
        [(-10, -5.0), (60, -4.0)],
        limits=(-10, 60),
        verticals_z_coordinate=2.5,
        maintain_profile=True,
        profile_time=30,
        profile_unit_weight_above_phreatic_level=17.5,
        profile_unit_weight_below_phreatic_level=19.125,
        end_of_settlement_calculation=500,
        stress_distribution_loads=True,
    )
    water, deep = (
        model.create_pl_line(
            [model.create_point(-10, y), model.create_point(60, y)], is_phreatic=phreatic
        )
        for y, phreatic in ((3.0, False), (-1.5, True))
    )
    lower = [
        model.create_point(*point) for point in ((-10, -2.0), (25, -2.0), (25, -1.0), (60, -1))
    ]
    upper = [model.create_point(*point) for point in ((-10, 0.0), (20, 0.0), (60, 1.0))]
    model.create_layer(lower, "Peat", water, deep)
    model.create_layer(upper, "Sand", deep, 99)
    model.create_vertical(3.125)
    model.create_uniform_load("before", -1, 20.0, 0.5, 0.0)
    model.create_non_uniform_load(
        "goes", [(20, 0.0), (30, 4.0), (60, 1.0)], 10, 200, temporary=True
    )
    return model


@pytest.mark.parametrize("model", [column, cross_section, with_options])
def test_a_model_comes_back(model: Callable[[], Model1D | Model2D], read: Read) -> None:
    metadata = Metadata("a.sli", "Soil & Sons", "somebody", "one", "", "three")
    text = generated(model(), metadata)
    found = read(text)
    assert found.left_out == ()
    assert type(found.model) is type(model())
    assert found.generate_input_file().getvalue().decode() == text


@pytest.mark.parametrize("kind", DrainType)
@pytest.mark.parametrize("schedule", [None, SIMPLE, DETAILED])
def test_drains_come_back(
    kind: DrainType,
    schedule: DrainageSimpleMode | list[tuple[float, float, float]] | None,
    read: Read,
) -> None:
    drain = VerticalDrain(
        kind, 0.0, 10.0, -5.0, 1.25, 0.2, thickness=0.004, grid=DrainGrid.RECTANGULAR,
        position_drain=-2.0, start_of_drainage=3.0, phreatic_level_in_drain=-1.0, schedule=schedule,
    )  # fmt: skip
    model = Model1D(CalculationModel.ISOTACHE, ConsolidationModel.TERZAGHI, vertical_drain=drain)
    text = generated(model)
    found = read(text)
    # The pipe that strips and columns don't have comes back with its default.
    unused = [("Position of the drain pipe", "-2.000", "0.000", Reason.OTHER_DRAIN)]
    assert told(found) == ([] if kind is DrainType.SAND_WALL else unused)
    for _, value, instead, _ in told(found):
        text = changed(
            text,
            (f"{value} = Position of the drain pipe", f" {instead} = Position of the drain pipe"),
        )
    assert found.generate_input_file().getvalue().decode() == text


def test_dissipation_comes_back(read: Read) -> None:
    model = cross_section()
    file = model.generate_input_file(dissipation_calculation=model.verticals[1])
    found = read(file.getvalue().decode())
    assert found.dissipation_calculation is not None
    assert found.dissipation_calculation.x == 50.0
    assert found.generate_input_file().getvalue() == file.getvalue()


def test_what_a_file_says_otherwise_is_told(read: Read) -> None:
    found = read(
        changed(
            generated(column()),
            ("        9.81 = Unit Weight", "       10.00 = Unit Weight"),
            ("0 : Submerging = FALSE", "1 : Submerging = TRUE"),
            ("DATE       : 01/01/1900", "DATE       : 21/11/2026"),
            ("[END OF INPUT DATA]", "[ELASTIC]\n1\n2\n[END OF ELASTIC]\n[END OF INPUT DATA]"),
        )
    )
    assert told(found) == [
        ("DATE", "21/11/2026", "01/01/1900", Reason.IDENTIFICATION),
        ("Unit Weight of Water", "10.00", "9.81", Reason.NO_KEY),
        ("Submerging", "1 (TRUE)", "0 (FALSE)", Reason.NO_KEY),
        ("the whole section", "2 lines", "", Reason.NO_KEY),
    ]


def test_a_sentence_for_each() -> None:
    one = LeftOut("WATER", 7, "Unit Weight of Water", "10.00", "9.81", Reason.NO_KEY)
    assert str(one) == (
        "[WATER], line 7: Unit Weight of Water is 10.00, in the model's file 9.81; the document of "
        "a model has no key for it."
    )
    gone = LeftOut("LAYERS", 9, "the layer of Clay", "", "", Reason.REFUSED, "it is too thin.")
    assert str(gone) == (
        "[LAYERS], line 9: the layer of Clay is missing in the model's file; a model refuses it: "
        "it is too thin."
    )


def test_the_line_is_that_of_the_file(read: Read) -> None:
    text = generated(column()).replace("9.81 = Unit", "9.80 = Unit")
    [one] = read(text).left_out
    assert text.split("\n")[one.line - 1].strip() == "9.80 = Unit Weight of Water"


LOAD = "[OTHER LOADS]\n    1 = number of items\nFill\n"


@pytest.mark.parametrize(
    ("lines", "what", "reason"),
    [
        (
            "Bank\n0 : Trapeziform\n 0 20.0 4.0 = Time\n 30 0 10 0 0 = xl, xm, xr, Xp, Yp\n",
            'the trapeziform load "Bank"',
            Reason.KIND_OF_LOAD,
        ),
        ("Half\n3 : Uniform\n 0.5 20 1 0 = Time\n", 'the uniform load "Half"', Reason.WHOLE_DAYS),
        ("Fill\n3 : Uniform\n 5 20 1 0 = Time\n", 'the uniform load "Fill"', Reason.REFUSED),
    ],
)
def test_loads_that_a_model_has_not(lines: str, what: str, reason: Reason, read: Read) -> None:
    text = changed(
        generated(column()),
        (LOAD, LOAD.replace("1 =", "2 =")),
        ("[END OF OTHER LOADS]", f"{lines}[END OF OTHER LOADS]"),
    )
    [(found, _, _, why)] = told(read(text))
    assert (found, why) == (what, reason)


def test_the_end_of_a_load_that_stays(read: Read) -> None:
    old = "          50        18.00        20.00   0           50"
    text = changed(generated(cross_section()), (old, old[:-2] + " 0"))
    found = read(text)
    assert told(found) == [('the end time of the load "Second lift"', "0", "50", Reason.END_TIME)]
    assert len(InputFile(found.generate_input_file().getvalue().decode()).non_uniform_loads) == 2


def test_a_load_between_two_points_of_a_slope(read: Read) -> None:
    text = changed(
        generated(with_options()),
        ("      20.000        0.000 = X, Y", "      40.000        0.500 = X, Y"),
        ("      30.000        4.000 = X, Y", "      50.000        4.000 = X, Y"),
    )
    found = read(text)
    assert found.left_out == ()
    file = InputFile(found.generate_input_file().getvalue().decode())
    [load] = file.non_uniform_loads
    assert load.outline == ((40.0, 0.5), (50.0, 4.0), (60.0, 1.0))
    surface = file.cross_section.boundaries[file.cross_section.layers[-1].top]
    assert (40.0, 0.5) in surface.points


def test_a_load_between_two_points_of_another_load(read: Read) -> None:
    text = changed(
        generated(cross_section()),
        (
            "      30.000        2.000 = X, Y\n      35.000",
            "      32.000        2.000 = X, Y\n      35.000",
        ),
    )
    found = read(text)
    assert found.left_out == ()
    first, second = InputFile(found.generate_input_file().getvalue().decode()).non_uniform_loads
    assert (32.0, 2.0) in first.outline
    assert second.outline[0] == (32.0, 2.0)


def test_a_load_in_the_air_is_refused(read: Read) -> None:
    text = changed(
        generated(with_options()),
        ("      20.000        0.000 = X, Y", "      20.000        2.000 = X, Y"),
    )
    [one] = read(text).left_out
    assert (one.what, one.reason) == ('the load "goes"', Reason.REFUSED)
    assert one.message.startswith("First point of non-uniform load (20.0, 2.0) is not in points")


def test_verticals_that_a_model_has_not(read: Read) -> None:
    old = "       3.125        2.500 = X, Z\n"
    rows = f"{old}       4.000        0.000 = X, Z\n      70.000        2.500 = X, Z\n"
    text = changed(
        generated(with_options()),
        ("    1 = number of items\n" + old, "    3 = number of items\n" + rows),
    )
    found = read(text)
    assert [(one.what, one.reason) for one in found.left_out] == [
        ("the vertical at x = 4 m", Reason.NO_KEY),
        ("the vertical at x = 70 m", Reason.REFUSED),
    ]


def test_a_column_has_one_vertical(read: Read) -> None:
    old = "    1 = number of items\n       0.000        0.000 = X, Z\n"
    rows = f"{old.replace('1 =', '2 =')}       5.000        0.000 = X, Z\n"
    found = read(changed(generated(column()), (old, rows)))
    assert [(one.what, one.reason) for one in found.left_out] == [
        ("the vertical at x = 5 m", Reason.ONE_DIMENSION)
    ]


def test_a_column_spreads_no_stress(read: Read) -> None:
    old = "0 : Stress distribution loads = None"
    found = read(changed(generated(column()), (old, "1 : Stress distribution loads = Simulate")))
    assert [(one.what, one.reason) for one in found.left_out] == [
        ("Stress distribution loads", Reason.ONE_DIMENSION)
    ]


def test_dissipation_where_no_vertical_stands(read: Read) -> None:
    text = changed(
        generated(with_options()),
        ("0 : Dissipation = FALSE", "1 : Dissipation = TRUE"),
        ("3.125 = X co-ordinate dissipation", "4.000 = X co-ordinate dissipation"),
    )
    found = read(text)
    assert found.dissipation_calculation is None
    told = {one.what: one for one in found.left_out}["Dissipation"]
    assert (told.reason, told.message) == (Reason.REFUSED, "no vertical stands at x = 4 m")


def test_a_load_that_comes_within_a_day(read: Read) -> None:
    old = "          10        10.00        10.00   1          200"
    [one] = read(
        changed(generated(with_options()), (old, old.replace("  10  ", "10.5  ", 1)))
    ).left_out
    assert (one.what, one.reason) == ('the load "goes"', Reason.WHOLE_DAYS)


def test_a_layer_without_thickness(read: Read) -> None:
    text = generated(with_options())
    sides = "       2 - Boundarynumber at top of layer\n       1 - Boundarynumber at bottom"
    text = changed(text, (sides, sides.replace("2 - Bound", "1 - Bound")))
    text = changed(text, ("      20.000        0.000 = X, Y", "      25.000       -1.000 = X, Y"))
    text = changed(text, ("      60.000        1.000 = X, Y", "      60.000       -1.000 = X, Y"))
    found = read(text)
    [one] = [one for one in found.left_out if one.section == "LAYERS"]
    assert (one.what, one.message) == ("the layer of Sand", "its top is its bottom")
    file = InputFile(found.generate_input_file().getvalue().decode())
    assert [layer.material for layer in file.cross_section.layers] == ["Peat"]


def test_calculation_times_that_a_model_has_not(read: Read) -> None:
    text = changed(
        generated(column()), ("3 : Number of items\n10\n", "5 : Number of items\n10\n10\n12.5\n")
    )
    found = read(text)
    assert [(one.what, one.reason) for one in found.left_out] == [
        ("the time 10", Reason.REFUSED),
        ("the time 12.5", Reason.WHOLE_DAYS),
    ]


def test_a_long_title_is_cut(read: Read) -> None:
    text = generated(column(), Metadata(title_2="a" * 50))
    [one] = read(text.replace("a" * 50, "a" * 60)).left_out
    assert (one.what, one.instead, one.message) == ("title 2", "a" * 50, "it has 60 characters")


def test_a_file_in_the_code_page_of_the_tool(tmp_path: Path) -> None:
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, create_default_materials=False
    )
    model.create_material("Kle\u00ef \u20ac", 14.0, 14.0, color=Color(1, 2, 3))
    model.update_geometry(-1.0, [(0.0, "Kle\u00ef \u20ac")])
    path = tmp_path / "old.sli"
    path.write_bytes(generated(model).replace("\n", "\r\n").encode("cp1252"))
    found = read_model(path)
    assert list(found.model.materials) == ["Kle\u00ef \u20ac"]
    assert found.model.materials["Kle\u00ef \u20ac"].color == Color(1, 2, 3)


def test_a_malformed_file_is_refused(read: Read) -> None:
    text = generated(column()).replace("SoilGamWet=15.00", "SoilGamWet=heavy")
    with pytest.raises(
        ParsingError, match=r"in section \[SOIL\], line \d+: SoilGamWet should be a"
    ):
        read(text)


def test_a_material_without_its_weight_is_refused(read: Read) -> None:
    text = generated(column()).replace("SoilGamWet=15.00\n", "")
    with pytest.raises(
        ParsingError, match=r'in section \[SOIL\], line \d+: "SoilGamWet" is missing'
    ):
        read(text)


def test_what_a_refusal_quotes_can_be_seen_and_is_not_long(read: Read) -> None:
    text = generated(column())
    with pytest.raises(ParsingError, match=r'and is "\\ufeff\\x00"\.$'):
        read(text.replace("SoilGamWet=15.00", "SoilGamWet=\ufeff\x00"))
    with pytest.raises(ParsingError, match=r'and is "xxx+ … x+"\.$') as refusal:
        read(text.replace("SoilGamWet=15.00", f"SoilGamWet={'x' * 9999}"))
    assert len(str(refusal.value)) < 500


def test_a_geometry_that_no_model_has_is_refused(read: Read) -> None:
    text = generated(cross_section())
    point = "        100.000          0.000          0.000"
    assert text.count(point) == 1
    with pytest.raises(ModelError):
        read(text.replace(point, "         99.000          0.000          0.000"))


def test_a_section_that_is_not_closed_is_refused(read: Read) -> None:
    text = changed(
        generated(column()), ("[END OF INPUT DATA]", "[ELASTIC]\n1\n[END OF INPUT DATA]")
    )
    with pytest.raises(ParsingError, match=r"\[ELASTIC\], line \d+: the section is not closed"):
        read(text)


def test_a_schedule_of_an_unknown_kind_is_refused(read: Read) -> None:
    drain = VerticalDrain(
        DrainType.COLUMN, 0.0, 10.0, -5.0, 1.25, 0.2, grid=DrainGrid.RECTANGULAR,
        start_of_drainage=3.0, phreatic_level_in_drain=-1.0, schedule=SIMPLE,
    )  # fmt: skip
    model = Model1D(CalculationModel.ISOTACHE, ConsolidationModel.TERZAGHI, vertical_drain=drain)
    text = changed(generated(model), ("1 : Flow type = Simple", "7 : Flow type = Simple"))
    with pytest.raises(ParsingError, match=r"line \d+: the kind 7 of schedule is unknown"):
        read(text)


def test_a_layer_that_does_not_lie_on_the_one_before_it_is_refused(read: Read) -> None:
    text = generated(with_options())
    below = "       2 - Boundarynumber at top of layer\n       1 - Boundarynumber at bottom"
    text = changed(text, (below, below.replace("1 - Bound", "0 - Bound")))
    with pytest.raises(
        ModelError, match=r"layer of Sand in line \d+ does not lie on the one before"
    ):
        read(text)


def test_what_no_file_can_be_made_of_is_refused(
    read: Read, monkeypatch: pytest.MonkeyPatch
) -> None:
    def refuse(_document: object) -> str:
        raise RefusalError(422, "soils is missing")

    monkeypatch.setattr(import_module("sembra.local.input_file.read_model"), "fill", refuse)
    with pytest.raises(ModelError, match="no file can be made of the model: soils is missing"):
        read(generated(column()))


def test_a_missing_file() -> None:
    with pytest.raises(FileNotFoundError):
        read_model("missing.sli")
