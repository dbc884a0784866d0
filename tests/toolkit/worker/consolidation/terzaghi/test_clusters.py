"""Clusters of layers that hold back their water."""

import pytest
from sembra.local.worker.consolidation.terzaghi.clusters import Cluster, find_clusters
from sembra.local.worker.failures import WorkerError
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import make_mesh

from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material

SAND, CLAY = material("Sand", drained=True, cv=0.0), material()
STIFF = material("Stiff clay", cv=0.04)

TOP_NODE = 1e-5
"""The topmost node of a column lies so far below its surface."""


def clusters(ground: Column, *, top: bool = True, bottom: bool = True) -> list[Cluster]:
    return list(find_clusters(ground, make_mesh(ground), top, bottom))


def test_drained_layers_part_clusters() -> None:
    stack = column((1, CLAY), (1, SAND), (1, CLAY), (1, STIFF), (1, SAND), (1, CLAY))
    found = clusters(stack, top=False, bottom=True)
    assert [(c.first, c.end) for c in found] == [(0, 1), (2, 4), (5, 6)]
    sides = [(c.drained_top, c.drained_bottom) for c in found]
    assert sides == [(False, True), (True, True), (True, True)]


def test_drained_ground_has_none() -> None:
    assert clusters(column((1, SAND), (2, SAND))) == []


def test_neighbours_are_one_cluster_whatever_they_are() -> None:
    (found,) = clusters(column((2, CLAY), (1, STIFF), (3, CLAY)))
    assert (found.first, found.end) == (0, 3)
    assert found.heights == pytest.approx([2 - TOP_NODE, 1, 3], rel=1e-12)
    assert found.coefficients == pytest.approx([0.01, 0.04, 0.01])


@pytest.mark.parametrize(
    ("top", "bottom", "sides"),
    [(True, True, 1), (True, False, 2), (False, True, 2), (False, False, 2)],
)
def test_length_is_doubled_unless_both_sides_are_drained(
    top: bool, bottom: bool, sides: int
) -> None:
    (found,) = clusters(column((2, CLAY), (4, STIFF)), top=top, bottom=bottom)
    # 2 / 0.1 + 4 / 0.2 = 40, in the square root of days.
    assert found.spans == pytest.approx([20, 20], abs=1.01e-4)
    assert found.length == pytest.approx(sides * (40 - TOP_NODE / 0.1))
    # Of a homogeneous layer as high that takes as long: (6 / 40)².
    assert found.coefficient == pytest.approx(0.0225, rel=1e-5)


def test_borders_are_those_of_the_layers_and_not_of_the_mesh() -> None:
    (found,) = clusters(column((1, CLAY), (2, STIFF), (2, CLAY)))
    assert found.borders == pytest.approx([0, 0.25, 0.5, 1], rel=1e-12)


def test_below_another_layer_the_whole_height_counts() -> None:
    (found,) = clusters(column((1, SAND), (4, CLAY)))
    assert found.height == pytest.approx(4.0, abs=1e-12)


@pytest.mark.parametrize("cv", [0.0, -0.01])
def test_a_material_without_cv_is_refused(cv: float) -> None:
    with pytest.raises(WorkerError, match="Clay needs a coefficient of consolidation greater than"):
        clusters(column((4, material(cv=cv))))
