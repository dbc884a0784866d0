"""Colours and their codes."""

import copy
import pickle

import pytest
from hypothesis import given
from hypothesis import strategies as st
from sembra.core import Color

CHANNELS = st.integers(0, 255)


def test_code_has_red_in_the_lowest_byte() -> None:
    assert Color(255, 0, 0).deltares == 255
    assert Color(0, 255, 0).deltares == 255 * 256
    assert Color(0, 0, 255).deltares == 255 * 65536


@given(CHANNELS, CHANNELS, CHANNELS)
def test_code_and_channels_round_trip(r: int, g: int, b: int) -> None:
    color = Color.from_deltares(Color(r, g, b).deltares)
    assert (color.r, color.g, color.b) == (r, g, b)


def test_black_is_true() -> None:
    assert Color(0, 0, 0)


def test_equality_hash_and_repr() -> None:
    assert Color(1, 2, 3) == Color.from_deltares(197121)
    assert len({Color(1, 2, 3), Color(1, 2, 3), Color(3, 2, 1)}) == 2
    assert repr(Color(1, 2, 3)) == "Color(r=1, g=2, b=3)"


def test_random_colours_differ_and_are_valid() -> None:
    colors = {Color.random() for _ in range(50)}
    assert len(colors) > 40
    assert all(0 <= color.deltares <= 0xFFFFFF for color in colors)


def test_copies_and_pickles() -> None:
    color = Color(1, 2, 3)
    assert copy.deepcopy(color) == color == pickle.loads(pickle.dumps(color))


def test_code_is_read_only() -> None:
    with pytest.raises(AttributeError):
        Color(1, 2, 3).deltares = 5  # type: ignore[misc]


@pytest.mark.parametrize("channels", [(256, 0, 0), (0, -1, 0)])
def test_channel_out_of_range_is_refused(channels: tuple[int, int, int]) -> None:
    with pytest.raises(ValueError, match="between 0 and 255"):
        Color(*channels)


@pytest.mark.parametrize("channel", [1.0, "1", True, None])
def test_channel_that_is_no_integer_is_refused(channel: object) -> None:
    with pytest.raises(TypeError, match="r must be an integer"):
        Color(channel, 0, 0)  # type: ignore[arg-type]


@pytest.mark.parametrize("code", [-1, 1 << 24])
def test_code_out_of_range_is_refused(code: int) -> None:
    with pytest.raises(ValueError, match="between 0 and 16777215"):
        Color.from_deltares(code)


def test_code_that_is_no_integer_is_refused() -> None:
    with pytest.raises(TypeError, match="code must be an integer, not float"):
        Color.from_deltares(1.0)  # type: ignore[arg-type]
