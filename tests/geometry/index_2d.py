"""What the index of a two-dimensional model knows, seen from outside."""

import gc
from collections.abc import Callable
from typing import Any

from sembra.external.dsettlement import _Boundary, _Vertical

Factory = Callable[..., Any]


def finds_chains(model: Any) -> bool:
    """Whether the index knows the boundaries of the model."""
    return any(type(known) is _Boundary for known in gc.get_referents(index_of(model)))


def finds_verticals(model: Any) -> bool:
    return any(type(known) is _Vertical for known in gc.get_referents(index_of(model)))


def index_of(model: Any) -> Any:
    return getattr(model, "_dsettlement_index", None)


def build(model: Any, points_of: Factory) -> Any:
    for y in (5.0, 3.0, 4.0):
        model._create_boundary(points_of(model, (0.0, y), (50.0, 3.0), (100.0, y)))
    for x in (5.0, 3.0, 4.0):
        model.create_vertical(x)
    return model
