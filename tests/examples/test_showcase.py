"""What `make demo` tells and writes, whatever the story."""

from pathlib import Path

import pytest

from examples import one_dimensional, two_dimensional
from tests.examples.showcase_run import Showcase, Story

image = pytest.importorskip(
    "matplotlib.image", reason="the pictures need matplotlib (dependency group demo)"
)

STORIES = {
    "one_dimensional": (8, (".sli", ".sld", "_column.png", "_settlement.png", "_stresses.png")),
    "two_dimensional": (9, (".sli", ".sld", "_section.png", "_settlement.png", "_depth.png")),
    "choice_of_model": (2, ("_residual.png",)),
    "parametric_study": (3, (".csv", "_spread.png")),
}
"""Number of steps and endings of the files of each story, by the name of its files."""

FILES = {name: [f"{name}{ending}" for ending in files] for name, (_, files) in STORIES.items()}
PICTURES = [file for files in FILES.values() for file in files if file.endswith(".png")]


@pytest.fixture(params=STORIES)
def story(request: pytest.FixtureRequest, showcase: Showcase) -> Story:
    return showcase.story(request.param)


def test_it_writes_the_files_and_pictures_of_each_story(showcase: Showcase) -> None:
    written = {path.name for path in showcase.folder.iterdir()}
    assert written == {file for files in FILES.values() for file in files}


def test_it_tells_each_step_in_plain_lines(story: Story) -> None:
    assert story.steps == list(range(1, STORIES[story.name][0] + 1))
    assert "\x1b" not in story.output
    for name in FILES[story.name]:
        assert str(story.folder / name) in story.output


@pytest.mark.parametrize("name", PICTURES)
def test_each_picture_is_a_png_of_a_legible_size(showcase: Showcase, name: str) -> None:
    assert (showcase.folder / name).read_bytes().startswith(b"\x89PNG\r\n\x1a\n")
    height, width, _ = image.imread(showcase.folder / name).shape
    assert 900 <= width <= 2000
    assert 600 <= height <= 2000


def test_the_column_is_filled_with_the_colours_of_its_materials(showcase: Showcase) -> None:
    painted = _colours(showcase.folder / "one_dimensional_column.png")
    for material in one_dimensional.build_model().materials.values():
        assert (material.color.r, material.color.g, material.color.b) in painted


def test_the_section_is_filled_with_the_colours_of_its_materials(showcase: Showcase) -> None:
    painted = _colours(showcase.folder / "two_dimensional_section.png")
    for material in two_dimensional.build_project().model.materials.values():
        assert (material.color.r, material.color.g, material.color.b) in painted


def _colours(path: Path) -> set[tuple[int, ...]]:
    pixels = image.imread(path)[:, :, :3]
    return {tuple(pixel) for pixel in (pixels * 255).round().astype(int).reshape(-1, 3).tolist()}
