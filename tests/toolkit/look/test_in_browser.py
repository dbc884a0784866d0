"""Pages as Chromium shows them, at the widths of a phone and a desk, and on paper."""

import os
import shutil
from collections.abc import Iterator
from pathlib import Path
from typing import TYPE_CHECKING

import pytest
from sembra.local.look import make_page

if TYPE_CHECKING:
    from playwright.sync_api import Browser

Pair = tuple[Path, Path]

playwright = pytest.importorskip(
    "playwright.sync_api", reason="playwright, which drives the browser, is not installed"
)
CHROMIUM = shutil.which("chromium")

pytestmark = pytest.mark.skipif(
    CHROMIUM is None, reason="no Chromium to show pages in; on Debian: apt-get install chromium"
)

PHONE, DESK = 390, 1280
"""Widths of the page in CSS pixels."""

SMALLEST_TEXT = 8.0
"""What can be read in a picture at an arm's length, in CSS pixels."""


@pytest.fixture(scope="module")
def browser() -> "Iterator[Browser]":
    """A Chromium that shows nothing on the screen."""
    # What is loaded before Python, to look after it, lets Chromium hang.
    environment = {name: value for name, value in os.environ.items() if name != "LD_PRELOAD"}
    with playwright.sync_playwright() as driver:
        browser = driver.chromium.launch(
            executable_path=CHROMIUM, args=["--no-sandbox"], env=environment
        )
        yield browser
        browser.close()


@pytest.fixture(scope="module")
def page_file(pair: Pair, tmp_path_factory: pytest.TempPathFactory) -> Path:
    """A page of input and results."""
    path = tmp_path_factory.mktemp("pages") / "page.html"
    path.write_text(make_page(*pair, checked=True), "utf-8")
    return path


@pytest.mark.parametrize("width", [PHONE, DESK])
def test_the_page_fits_its_width(
    browser: "Browser", page_file: Path, tmp_path: Path, width: int
) -> None:
    page = browser.new_page(viewport={"width": width, "height": 844})
    asked: list[str] = []
    said: list[str] = []
    page.on("request", lambda request: asked.append(request.url))
    page.on("console", lambda message: said.append(message.text))
    page.goto(page_file.as_uri())
    assert asked == [page_file.as_uri()]
    assert said == []
    assert page.evaluate("document.documentElement.scrollWidth") <= width
    for picture in page.locator("svg:visible").all():
        box = picture.bounding_box()
        assert box
        assert box["x"] >= 0
        assert box["x"] + box["width"] <= width
        assert box["height"] > 100
    assert page.screenshot(path=tmp_path / "page.png", full_page=True)
    page.close()


@pytest.mark.parametrize("width", [PHONE, DESK])
def test_texts_in_pictures_can_be_read(browser: "Browser", page_file: Path, width: int) -> None:
    page = browser.new_page(viewport={"width": width, "height": 844})
    page.goto(page_file.as_uri())
    sizes = page.evaluate(
        """[...document.querySelectorAll("svg text")].filter(text => text.checkVisibility()).map(
             text => parseFloat(getComputedStyle(text).fontSize) * text.getScreenCTM().a)"""
    )
    assert len(sizes) > 50
    assert min(size for size in sizes if size) >= SMALLEST_TEXT
    page.close()


def test_one_picture_of_the_ground_is_shown_at_a_time(browser: "Browser", page_file: Path) -> None:
    page = browser.new_page()
    page.goto(page_file.as_uri())
    shown = []
    for width in (PHONE, DESK):
        page.set_viewport_size({"width": width, "height": 844})
        [picture] = page.locator(".ground svg:visible").all()
        shown.append(picture.evaluate("svg => svg.parentElement.className"))
    assert shown == ["on-narrow", "on-wide"]
    page.close()


def test_the_page_on_paper(browser: "Browser", page_file: Path) -> None:
    page = browser.new_page(viewport={"width": 680, "height": 1000})
    page.goto(page_file.as_uri())
    page.emulate_media(media="print")
    # A4 without its margins is 180 mm wide, 680 CSS pixels; nothing scrolls on paper.
    assert page.evaluate("document.documentElement.scrollWidth") <= 680
    assert page.evaluate(
        "[...document.querySelectorAll('.table')].every(t => t.scrollWidth <= t.clientWidth)"
    )
    assert not page.locator("details").is_visible()
    assert page.pdf(format="A4").startswith(b"%PDF")
    page.close()
