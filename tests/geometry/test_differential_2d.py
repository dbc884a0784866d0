"""Two-dimensional models beside their plain-Python equivalent, call by call.

Random models are built in both; every call, refused ones included, must leave the same state, give
the same answer or raise an exception of the same type and text. SEMBRA_RANDOM_MODELS says how many
models are built. They are others in each run. A model on which the editions differ is saved as a
file, which `SEMBRA_REPLAY=fuzz-findings/model-….json` builds again.
"""

import os
import random
from collections.abc import Callable

import pytest

from tests.geometry.hostile_programs_2d import compare_hostile_program
from tests.geometry.random_models_2d import compare_random_model
from tests.seeds import new_seed, replayed, save_finding

MODELS = int(os.environ.get("SEMBRA_RANDOM_MODELS", "20000"))
PROGRAMS = int(os.environ.get("SEMBRA_HOSTILE_PROGRAMS", "4000"))
CHUNKS = 20
SEED = new_seed()


def compare(what: str, compare_one: Callable[[random.Random, str], bool]) -> bool:
    """Compare what a name gives, and save the name if the editions differ."""
    try:
        return compare_one(random.Random(what), what)
    except AssertionError as error:
        path = save_finding("model", {"name": what, "difference": str(error)})
        raise AssertionError(f"SEMBRA_REPLAY={path} builds this again\n{error}") from error


@pytest.mark.parametrize("chunk", range(CHUNKS))
def test_random_models_are_what_plain_python_makes_of_them(chunk: int) -> None:
    names = [f"model {SEED} {number}" for number in range(chunk, MODELS, CHUNKS)]
    print(f"SEMBRA_SEED={SEED}")
    indexed = [compare(name, compare_random_model) for name in names]
    # Else nothing but searches would have been compared with searches.
    assert sum(indexed) >= len(indexed) // 3


@pytest.mark.parametrize("chunk", range(CHUNKS))
def test_hostile_programs_do_what_they_do_in_plain_python(chunk: int) -> None:
    names = [f"program {SEED} {number}" for number in range(chunk, PROGRAMS, CHUNKS)]
    print(f"SEMBRA_SEED={SEED}")
    hostile = [compare(name, compare_hostile_program) for name in names]
    # Else they would have been tame.
    assert sum(hostile) >= len(hostile) // 5


def test_what_differed_once_is_built_again() -> None:
    finding = replayed("model")
    if finding is None:
        pytest.skip("SEMBRA_REPLAY names no model that was saved")
    name = finding["name"]
    kind = compare_random_model if name.startswith("model") else compare_hostile_program
    kind(random.Random(name), name)
