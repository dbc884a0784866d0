"""Dissipation: the local degree of layers, against finite differences and published results."""

import re

import numpy as np
import pytest
from sembra.local.worker.consolidation.terzaghi.degrees import TerzaghiColumn
from sembra.local.worker.consolidation.terzaghi.layer_degrees import dissipation
from sembra.local.worker.ground.column import Column
from sembra.local.worker.ground.mesh import make_mesh
from sembra.local.worker.input import read_project

from tests.toolkit.samples import FOLDER, needs_samples
from tests.toolkit.worker.consolidation.drains.made_drains import RATE, drains
from tests.toolkit.worker.made_column import column
from tests.toolkit.worker.made_material import material
from tests.toolkit.worker.made_options import options

CV = 0.01
TIMES = np.array([3.0, 30.0, 100.0])


def local(ground: Column, *, top: bool = True, bottom: bool = True) -> np.ndarray:
    chosen = options(top=top, bottom=bottom)
    return dissipation(TerzaghiColumn(ground, make_mesh(ground), chosen, None), TIMES)


def finite_differences(time: float, *, bottom: bool, cells: int = 210) -> list[float]:
    """Mean degrees of two layers of 10 and 20 in h / sqrt(c_v), drained at the top."""
    step = 30.0 / cells
    main = np.full(cells, -2.0)
    main[0], main[-1] = -3.0, -3.0 if bottom else -1.0
    matrix = np.diag(main) + np.diag(np.ones(cells - 1), 1) + np.diag(np.ones(cells - 1), -1)
    values, vectors = np.linalg.eigh(matrix / step**2)
    excess = vectors @ (np.exp(values * time) * (vectors.T @ np.ones(cells)))
    border = cells // 3
    return [1 - float(excess[:border].mean()), 1 - float(excess[border:].mean())]


@pytest.mark.parametrize("bottom", [False, True])
def test_layers_of_a_cluster_against_finite_differences(bottom: bool) -> None:
    layers = [(1.0, material(cv=CV)), (4.0, material(cv=4 * CV))]
    expected = np.array([finite_differences(time, bottom=bottom) for time in TIMES]).T
    downwards = local(column(*layers), bottom=bottom)
    assert downwards == pytest.approx(expected, abs=2e-4)
    assert np.all(downwards[0] > downwards[1])


def test_layers_count_from_the_top_even_where_the_bottom_alone_is_drained() -> None:
    ground = column((1.0, material(cv=CV)), (4.0, material(cv=4 * CV)))
    assert local(ground, top=False) == pytest.approx(local(ground, bottom=False), abs=1e-12)


def test_turned_over_between_drained_sides() -> None:
    layers = [(1.0, material(cv=CV)), (4.0, material(cv=4 * CV))]
    assert local(column(*layers[::-1]))[::-1] == pytest.approx(local(column(*layers)), abs=2e-4)


def test_a_cut_in_layers_of_one_clay_changes_nothing() -> None:
    whole = local(column((4.0, material())), bottom=False)[0]
    parts = local(column((1.0, material()), (3.0, material())), bottom=False)
    assert 0.25 * parts[0] + 0.75 * parts[1] == pytest.approx(whole, abs=1e-5)


def test_drained_layers_consolidate_at_once() -> None:
    sand = material("Sand", drained=True)
    upper, between, lower = local(column((1, material()), (1, sand), (2, material())))
    assert between.tolist() == [1, 1, 1]
    assert np.all(upper > lower)


def test_drains_take_their_part_at_every_depth() -> None:
    ground = column((1.0, material()), (3.0, material()))
    found = TerzaghiColumn(ground, make_mesh(ground), options(), drains(start=10.0))
    left = np.exp(-RATE * CV * np.maximum(TIMES - 10.0, 0.0))
    expected = (1 - local(ground)) * left
    assert 1 - dissipation(found, TIMES) == pytest.approx(expected, rel=1e-6)


def printed(name: str) -> list[np.ndarray]:
    """Time and degree of each layer from top to bottom, as published."""
    text = (FOLDER / f"{name}.sld").read_text("latin-1")
    blocks = re.findall(r"\[Dissipation layer\]\s+\d+  =  Layer Number *\n(.*?)\n\[End", text, re.S)
    return [np.array([line.split() for line in block.splitlines()], float) for block in blocks][
        ::-1
    ]


@needs_samples
@pytest.mark.parametrize(
    ("name", "layers"), [("Tutorial-1c", 4), ("Tutorial-6", 5), ("bm4-8b", 1), ("bm3-14a", 1)]
)
def test_published_dissipation_to_the_printed_digits(name: str, layers: int) -> None:
    project = read_project((FOLDER / f"{name}.sli").read_text("latin-1"))
    expected = printed(name)
    assert len(expected) == layers
    times = expected[0][:, 0]
    ground = project.columns[0]
    whole = TerzaghiColumn(ground, make_mesh(ground), project.options, project.drains)
    for ours, theirs in zip(dissipation(whole, times), expected, strict=True):
        assert ours == pytest.approx(theirs[:, 1], abs=1e-7)
