"""What `make demo` tells and writes."""

import re
from pathlib import Path

import pytest

from examples import one_dimensional as story

from .conftest import Run

image = pytest.importorskip(
    "matplotlib.image", reason="the pictures need matplotlib (dependency group demo)"
)

PICTURES = ("one_dimensional_column.png", "one_dimensional_settlement.png")


class Showcase:
    """A run of the showcase: its output and the folder that it wrote."""

    def __init__(self, output: str, folder: Path) -> None:
        self.output = output
        self.folder = folder

    @property
    def table(self) -> list[list[str]]:
        """The fields of the rows of the printed table."""
        rows = (line.split() for line in self.output.splitlines())
        width = 3 + len(story.LOADS) - 1
        return [row for row in rows if len(row) == width and row[0].isdigit()]

    def numbers(self, tag: str) -> list[list[float]]:
        """The rows of numbers of the first block with that tag in the result file."""
        text = (self.folder / "one_dimensional.sld").read_text(encoding="utf-8")
        results = text.partition("[Results]")[2]
        block = results.partition(f"[{tag}]")[2].partition("[E")[0]
        rows = [line.split() for line in block.splitlines() if line and "=" not in line]
        return [[float(field) for field in row] for row in rows]


@pytest.fixture(scope="module")
def showcase(run_example: Run, tmp_path_factory: pytest.TempPathFactory) -> Showcase:
    folder = tmp_path_factory.mktemp("showcase") / "demo"
    return Showcase(run_example("-m", "examples.showcase", str(folder)), folder)


def test_it_writes_the_input_the_result_and_two_pictures(showcase: Showcase) -> None:
    written = {path.name for path in showcase.folder.iterdir()}
    assert written == {"one_dimensional.sli", "one_dimensional.sld", *PICTURES}


def test_it_tells_each_step_in_plain_lines(showcase: Showcase) -> None:
    steps = re.findall(r"^(\d+)\. \w", showcase.output, re.MULTILINE)
    assert steps == [str(number) for number in range(1, 9)]
    assert "\x1b" not in showcase.output
    for name in ("one_dimensional.sli", "one_dimensional.sld", *PICTURES):
        assert str(showcase.folder / name) in showcase.output


def test_the_input_file_holds_the_loads_of_the_story(showcase: Showcase) -> None:
    lines = (showcase.folder / "one_dimensional.sli").read_text(encoding="utf-8").splitlines()
    assert {load.name for load in story.LOADS} <= set(lines)


def test_the_table_has_the_settlements_of_the_result_file(showcase: Showcase) -> None:
    by_time = {time: row for time, *row in showcase.numbers("Time-Settlement per Load")}
    steps = [load for load in story.LOADS if load.time >= 0]
    assert [int(time) for time, *_ in showcase.table] == list(story.CALCULATION_TIMES)
    for time, *fields in showcase.table:
        for step, field, settlement in zip(steps, fields, by_time[float(time)], strict=False):
            assert field == (f"{settlement:.3f}" if int(time) > step.time else "-")


def test_the_table_has_the_residual_settlements_of_the_result_file(showcase: Showcase) -> None:
    residual = showcase.numbers("RESIDUAL SETTLEMENT DATA")
    told = [(row[0], *row[-2:]) for row in showcase.table]
    assert told == [
        (f"{time:g}", f"{part:.1f}", f"{rest:.3f}") for _, time, _, part, rest in residual
    ]


def test_final_and_residual_settlement_are_told_in_words(showcase: Showcase) -> None:
    residual = {time: rest for _, time, _, _, rest in showcase.numbers("RESIDUAL SETTLEMENT DATA")}
    final = showcase.numbers("RESIDUAL SETTLEMENT DATA")[-1][2]
    assert f"Final settlement: {final:.3f} m" in showcase.output
    assert f"day {story.OPENING}: {residual[story.OPENING]:.3f} m" in showcase.output


@pytest.mark.parametrize("name", PICTURES)
def test_each_picture_is_a_png_of_a_legible_size(showcase: Showcase, name: str) -> None:
    assert (showcase.folder / name).read_bytes().startswith(b"\x89PNG\r\n\x1a\n")
    height, width, _ = image.imread(showcase.folder / name).shape
    assert 900 <= width <= 2000
    assert 900 <= height <= 2000


def test_the_column_is_filled_with_the_colours_of_its_materials(showcase: Showcase) -> None:
    pixels = image.imread(showcase.folder / PICTURES[0])[:, :, :3]
    painted = {tuple(pixel) for pixel in (pixels * 255).round().astype(int).reshape(-1, 3).tolist()}
    for material in story.build_model().materials.values():
        assert (material.color.r, material.color.g, material.color.b) in painted
