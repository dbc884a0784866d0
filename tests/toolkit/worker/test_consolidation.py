"""Terzaghi's degree of consolidation, against the published table and other solutions."""

import numpy as np
import pytest
from sembra.local.worker.consolidation.clusters import clusters
from sembra.local.worker.consolidation.degrees import degrees_of_consolidation
from sembra.local.worker.consolidation.terzaghi_series import mean_degree
from sembra.local.worker.errors import WorkerError
from sembra.local.worker.ground.column import Column, Layer
from sembra.local.worker.ground.material import Material

from tests.toolkit.worker.made_material import material

# Degree of consolidation against the time factor, as printed in textbooks of soil mechanics.
TABLE = [
    (0.008, 0.10),
    (0.031, 0.20),
    (0.071, 0.30),
    (0.126, 0.40),
    (0.197, 0.50),
    (0.287, 0.60),
    (0.403, 0.70),
    (0.567, 0.80),
    (0.848, 0.90),
    (1.129, 0.95),
]


def column(*layers: tuple[float, Material]) -> Column:
    """A column from level 0 down, of pairs of thickness and material."""
    top, stacked = 0.0, []
    for thickness, soil in layers:
        stacked.append(Layer(top, top - thickness, soil, 0.0, 0.0))
        top -= thickness
    return Column(0.0, 0.0, tuple(stacked), 0.0)


@pytest.mark.parametrize(("time_factor", "degree"), TABLE)
def test_published_table(time_factor: float, degree: float) -> None:
    drainage_length = 2.0
    time = time_factor * drainage_length**2 / 1e-2
    clay = column((2 * drainage_length, material()))
    result = degrees_of_consolidation(clay, np.array([time]), True, True)
    assert result[0, 0] == pytest.approx(degree, abs=0.002)


def test_one_drained_side_doubles_the_drainage_length() -> None:
    times = np.array([1.0, 100.0, 1000.0])
    both = degrees_of_consolidation(column((4.0, material())), times, True, True)
    for sides in ((True, False), (False, True)):
        one = degrees_of_consolidation(column((2.0, material())), times, *sides)
        assert one == pytest.approx(both, abs=1e-12)


def test_nothing_before_the_load_and_all_at_last() -> None:
    result = degrees_of_consolidation(
        column((4.0, material())), np.array([-1.0, 0.0, 1e9]), True, True
    )
    assert result[0] == pytest.approx([0, 0, 1])


def test_image_and_fourier_series_meet() -> None:
    before, after = mean_degree(np.array([0.05 - 1e-12, 0.05 + 1e-12]), 1.0, 0.2, 0.7)
    assert before == pytest.approx(after, abs=1e-9)


def test_a_cut_in_equal_layers_changes_nothing() -> None:
    times = np.array([3.0, 300.0])
    whole = degrees_of_consolidation(column((4.0, material())), times, True, False)[0]
    parts = degrees_of_consolidation(
        column((1.0, material()), (3.0, material())), times, True, False
    )
    assert 0.25 * parts[0] + 0.75 * parts[1] == pytest.approx(whole, abs=1e-12)
    assert np.all(parts[0] > parts[1])


def finite_differences(time: float, cells: int = 300) -> tuple[float, float]:
    """Mean degrees of two layers of 1 and 2 in h / sqrt(cv), drained at the top alone."""
    step = 3.0 / cells
    main = np.full(cells, -2.0)
    main[0], main[-1] = -3.0, -1.0
    matrix = np.diag(main) + np.diag(np.ones(cells - 1), 1) + np.diag(np.ones(cells - 1), -1)
    values, vectors = np.linalg.eigh(matrix / step**2)
    excess = vectors @ (np.exp(values * time) * (vectors.T @ np.ones(cells)))
    border = cells // 3
    return 1 - float(excess[:border].mean()), 1 - float(excess[border:].mean())


@pytest.mark.parametrize("time", [0.05, 0.5, 2.0])
def test_layers_of_a_cluster_against_finite_differences(time: float) -> None:
    cv = 1.0
    layers = [(1.0, material(cv=cv)), (4.0, material(cv=4 * cv))]
    downwards = degrees_of_consolidation(column(*layers), np.array([time]), True, False)
    assert downwards[:, 0] == pytest.approx(finite_differences(time), abs=2e-4)
    upwards = degrees_of_consolidation(column(*layers[::-1]), np.array([time]), False, True)
    assert upwards[::-1] == pytest.approx(downwards)


def test_a_drained_layer_consolidates_at_once() -> None:
    sand = column((1.0, material(drained=True, cv=0.0)))
    assert degrees_of_consolidation(sand, np.array([0.0, 1e-6]), False, False).tolist() == [[0, 1]]


def test_drained_layers_part_clusters() -> None:
    sand, clay = material(drained=True), material()
    stack = column((1, clay), (1, sand), (1, clay), (1, clay), (1, sand))
    found = [
        (c.first, c.end, c.drained_top, c.drained_bottom) for c in clusters(stack, False, True)
    ]
    assert found == [(0, 1, False, True), (2, 4, True, True)]


def test_water_that_cannot_leave_is_refused() -> None:
    with pytest.raises(WorkerError, match="can drain neither"):
        degrees_of_consolidation(column((4.0, material())), np.array([1.0]), False, False)


def test_a_material_without_cv_is_refused() -> None:
    with pytest.raises(WorkerError, match="coefficient of consolidation greater than zero"):
        degrees_of_consolidation(column((4.0, material(cv=0.0))), np.array([1.0]), True, True)
