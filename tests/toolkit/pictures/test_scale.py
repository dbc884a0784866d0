"""Scales of cross-sections."""

import pytest
from hypothesis import given
from hypothesis import strategies as st
from sembra.local.pictures.scale import STEPS, fit

sizes = st.floats(0.5, 5000)


def test_a_long_section_is_exaggerated() -> None:
    scale = fit(80, 16, 10, 5)
    assert (scale.width, scale.height, scale.exaggeration) == (10, 5, 2.5)


def test_the_exaggeration_is_round() -> None:
    scale = fit(80, 16, 10, 5.9)
    assert (scale.width, scale.height, scale.exaggeration) == (10, 5, 2.5)


def test_a_very_long_section_is_exaggerated_in_tens() -> None:
    assert fit(2000, 9, 10, 5).exaggeration == 100


def test_a_deep_section_is_narrower_than_the_room() -> None:
    scale = fit(5, 20, 10, 5)
    assert (scale.width, scale.height, scale.exaggeration) == (1.25, 5, 1)


@given(sizes, sizes)
def test_it_fits_and_the_told_exaggeration_holds(length: float, rise: float) -> None:
    scale = fit(length, rise, 10, 5)
    assert scale.width <= 10 * (1 + 1e-9)
    assert scale.height <= 5 * (1 + 1e-9)
    exaggeration = (scale.height / rise) / (scale.width / length)
    assert exaggeration == pytest.approx(scale.exaggeration)
    assert float(f"{scale.exaggeration:.1e}") == pytest.approx(scale.exaggeration)
    assert any(scale.exaggeration / step in (1, 10, 100, 1e3, 1e4) for step in STEPS)
