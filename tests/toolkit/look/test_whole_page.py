"""Pages as a whole, with their pictures."""

import re
from pathlib import Path
from xml.etree import ElementTree

import pytest
from sembra.local.look import make_page
from sembra.local.look.page import Page, read_page, render

from tests.toolkit.look.reading_pages import ReadPage
from tests.toolkit.samples import all_input_files, needs_samples

Pair = tuple[Path, Path]
SVG = "{http://www.w3.org/2000/svg}"


def assert_is_one_page(html: str) -> ReadPage:
    """Assert that a page is whole, and refers to nothing outside itself."""
    page = ReadPage(html)
    assert page.open == []
    assert len(page.names) == len(set(page.names))
    assert all(address.startswith("#") for address in page.addresses)
    referred = [address[1:] for address in page.addresses] + re.findall(r"url\(#([^)]+)\)", html)
    assert set(referred) <= set(page.names)
    assert "url(http" not in html
    assert "@import" not in html
    return page


def test_a_page_of_input_and_results(pair: Pair) -> None:
    page = assert_is_one_page(make_page(*pair))
    for text in ("A <made> file", "Soil & Sons", "Layers", "Soils", "Loads", "NEN-Koppejan, with"):
        assert any(text in shown for shown in page.texts), text
    for picture in ("Stresses along depth", "Settlement along depth", "Degree of consolidation"):
        assert any(shown.startswith(picture) for shown in page.texts), picture


def test_entries_of_legends_show_their_lines(pair: Pair) -> None:
    page = read_page(*pair)
    assert page.ground
    assert page.ground.narrow
    for picture in (page.ground.narrow, *(drawing.wide for drawing in page.drawings)):
        root = ElementTree.fromstring(picture)
        [legend] = [g for g in root.iter(f"{SVG}g") if g.get("id", "").endswith("-legend_1")]
        lines = [path.get("d", "").strip() for path in legend.iter(f"{SVG}path")]
        assert lines
        assert all(lines)


def test_an_input_file_alone_has_no_results(pair: Pair) -> None:
    page = read_page(pair[0])
    assert page.ground
    assert not page.drawings
    assert not page.settlements
    assert "Results" not in assert_is_one_page(make_page(pair[0])).texts


def assert_shows_all(page: Page) -> None:
    """Assert that nothing of a published pair was left out."""
    assert page.remarks == []
    assert page.ground
    assert len(page.drawings) >= 2
    assert len(page.tables) >= 2
    assert page.settlements
    assert_is_one_page(render(page))


@needs_samples
@pytest.mark.parametrize("path", all_input_files(), ids=lambda path: path.stem)
@pytest.mark.usefixtures("no_curves")
def test_every_published_pair_gives_a_page(path: Path) -> None:
    assert_shows_all(read_page(path, path.with_suffix(".sld")))


@needs_samples
@pytest.mark.parametrize("path", all_input_files()[::9], ids=lambda path: path.stem)
def test_a_published_pair_gives_a_page_with_pictures(path: Path) -> None:
    assert_shows_all(read_page(path, path.with_suffix(".sld")))
