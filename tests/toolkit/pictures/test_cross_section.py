"""Thickness of loads and parts of lines."""

import numpy as np
import pytest
from sembra.core import Color
from sembra.local.pictures.cross_section import CrossSection, DrainBand, Embankment, Layer, between

SURFACE = [(0.0, 0.0), (40.0, 2.0)]
LOWER = Embankment("Lower", [(0.0, 0.0), (10.0, 3.0), (30.0, 3.0), (40.0, 2.0)], 0, None, (18, 20))
UPPER = Embankment("Upper", [(10.0, 3.0), (20.0, 5.0), (30.0, 3.0)], 10, 20, (18, 20))


@pytest.fixture
def section() -> CrossSection:
    layer = Layer(SURFACE, [(0.0, -5.0), (40.0, -6.0)], "Clay", Color(1, 2, 3), (15, 15))
    drains = DrainBand("Drains", 10, 30, -7.0, 1.5)
    return CrossSection([layer], [(0.0, -1.0), (40.0, -1.0)], {}, [20.0], [LOWER, UPPER], drains)


def test_the_first_load_lies_on_the_surface(section: CrossSection) -> None:
    x = np.array([0.0, 10.0, 20.0, 40.0])
    assert section.thickness(0, x) == pytest.approx([0.0, 2.5, 2.0, 0.0])


def test_the_next_load_lies_on_the_first(section: CrossSection) -> None:
    x = np.array([5.0, 10.0, 15.0, 20.0, 31.0])
    assert section.thickness(1, x) == pytest.approx([0.0, 0.0, 1.0, 2.0, 0.0])


def test_the_extent_is_that_of_all_there_is(section: CrossSection) -> None:
    assert section.limits == (0.0, 40.0)
    assert section.extent == (-7.0, 5.0)


def test_part_of_a_line_ends_where_it_is_cut() -> None:
    line = [(0.0, 0.0), (10.0, 5.0), (20.0, 5.0)]
    assert between(line, 5.0, 15.0) == [(5.0, 2.5), (10.0, 5.0), (15.0, 5.0)]


def test_part_of_a_line_keeps_a_vertical_step() -> None:
    line = [(0.0, 0.0), (10.0, 0.0), (10.0, 4.0), (20.0, 4.0)]
    assert between(line, 5.0, 15.0) == [(5.0, 0.0), (10.0, 0.0), (10.0, 4.0), (15.0, 4.0)]
