"""Two-dimensional models beside their plain-Python equivalent, call by call.

Random models are built in both; every call, refused ones included, must leave the same state, give
the same answer or raise an exception of the same type and text. SEMBRA_RANDOM_MODELS says how many
models are built.
"""

import os
import random

import pytest

from tests.geometry.random_models_2d import compare_random_model

MODELS = int(os.environ.get("SEMBRA_RANDOM_MODELS", "20000"))
CHUNKS = 20


@pytest.mark.parametrize("chunk", range(CHUNKS))
def test_random_models_are_what_plain_python_makes_of_them(chunk: int) -> None:
    numbers = range(chunk, MODELS, CHUNKS)
    registered = [
        compare_random_model(random.Random(number), f"model {number}") for number in numbers
    ]
    # Else nothing but searches would have been compared with searches.
    assert sum(registered) >= len(registered) // 3
