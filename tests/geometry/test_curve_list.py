"""`_CurveList`, `_PlLine` and `_Boundary`."""

import copy
import itertools
import math
import os
import pickle
import subprocess
import sys
from collections.abc import Sequence
from typing import Any

import pytest
from sembra.external.dsettlement import _Boundary, _Curve, _CurveList, _PlLine, _Point

CLASSES: list[Any] = [_CurveList, _PlLine, _Boundary]


def curves_through(*pairs: tuple[float, float]) -> list[_Curve]:
    points = [_Point(x, y) for x, y in pairs]
    return [_Curve(p1, p2) for p1, p2 in itertools.pairwise(points)]


STORY = ((0, 5), (50, 5), (100, 2.5))


@pytest.mark.parametrize("cls", CLASSES)
def test_the_list_is_kept_and_read_as_a_copy(cls: Any) -> None:
    curves = curves_through(*STORY)
    chain = cls(curves)
    assert vars(chain) == {"_curves": curves}
    assert vars(chain)["_curves"] is curves
    assert chain._curves is curves
    assert chain.curves == curves
    assert chain.curves is not curves
    chain.curves.clear()
    assert len(chain.curves) == 2
    curves.pop()
    assert len(chain.curves) == 1


def test_curves_that_run_backwards_do_not_connect() -> None:
    with pytest.raises(AssertionError, match=r"^Curves must be connected$"):
        _CurveList(curves_through((0, 0), (60, 0), (40, 0)))


def test_curves_that_rise_upright_connect() -> None:
    assert len(_CurveList(curves_through((0, 0), (50, 0), (50, 5), (100, 5))).points) == 4


def test_curves_connect_by_equal_points_not_by_the_same() -> None:
    first, second = _Curve(_Point(0, 0), _Point(1, 0)), _Curve(_Point(1.0, 0.0), _Point(2, 0))
    assert _CurveList([first, second]).points[1] is second.p1


def test_without_assertions_every_chain_is_accepted() -> None:
    program = (
        "from sembra.external.dsettlement import _Curve, _CurveList, _Point, Model2D,"
        " CalculationModel as C, ConsolidationModel as D\n"
        "a, b, c = (_Point(x, 0.0) for x in (0.0, 60.0, 40.0))\n"
        "assert False\n"
        "print(len(_CurveList([_Curve(a, b), _Curve(b, c)]).points))\n"
        "model = Model2D(C.NEN_KOPPEJAN, D.DARCY, [(0.0, 0.0), (100.0, 0.0)])\n"
        "points = [model.create_point(x, 1.0) for x in (0.0, 60.0, 40.0, 100.0)]\n"
        "print([p.x for p in model.create_pl_line(points).points])\n"
        "try:\n"
        "    _CurveList(1)\n"
        "except TypeError as error:\n"
        "    print(error)\n"
    )
    done = subprocess.run(
        [sys.executable, "-O", "-c", program],
        capture_output=True,
        text=True,
        check=True,
        env=os.environ | {"PYTHONPATH": ":".join(sys.path)},
    )
    assert done.stdout.splitlines() == [
        "3",
        "[0.0, 40.0, 40.0, 100.0]",
        "object of type 'int' has no len()",
    ]


def test_a_chain_without_curves_is_empty_and_has_no_points() -> None:
    chain = _CurveList([])
    assert chain.curves == []
    assert chain.area_above_horizontal() == 0.0
    assert type(chain.area_above_horizontal()) is float
    with pytest.raises(IndexError, match=r"^list index out of range$"):
        _ = chain.points


def test_any_sequence_with_slices_will_do() -> None:
    curves: Any = tuple(curves_through(*STORY))
    chain: Any = _CurveList(curves)
    assert chain._curves is curves
    assert chain.curves == list(curves)
    broken: Any = {0: curves[0], 1: curves[1]}
    with pytest.raises((TypeError, KeyError)):
        _CurveList(broken)


def test_points_are_those_of_the_curves_from_left_to_right() -> None:
    curves = curves_through(*STORY)
    points = _CurveList(curves).points
    assert points == [_Point(0, 5), _Point(50, 5), _Point(100, 2.5)]
    assert points[0] is curves[0].p1
    assert points[-1] is curves[-1].p2


def test_the_area_follows_the_trapezium_rule_and_has_a_sign() -> None:
    chain = _CurveList(curves_through(*STORY))
    assert chain.area_above_horizontal() == 437.5
    assert chain.area_above_horizontal(5.0) == -62.5
    assert chain.area_above_horizontal(y=5.0) == -62.5
    upright = _CurveList(curves_through((0, 1), (50, 1), (50, 9), (100, 1)))
    assert upright.area_above_horizontal() == 50 * 1 + 50 * 5


def area_in_python(pairs: Sequence[tuple[float, float]]) -> float:
    area = 0.0
    for (x1, y1), (x2, y2) in itertools.pairwise(pairs):
        area += (x2 - x1) * ((y1 + y2) / 2 - 0.0)
    return area


def test_the_area_is_rounded_as_python_rounds() -> None:
    pairs = [(i * 0.1, math.sin(i) * 10**9 + i / 7) for i in range(2000)]
    assert _CurveList(curves_through(*pairs)).area_above_horizontal() == area_in_python(pairs)


def test_chains_are_equal_by_their_curves_whatever_their_class() -> None:
    pl_line, boundary = _PlLine(curves_through(*STORY)), _Boundary(curves_through(*STORY))
    assert pl_line == boundary
    assert hash(pl_line) == hash(boundary) == hash(tuple(boundary.curves))
    assert pl_line != _PlLine(curves_through(*STORY[:2]))
    assert pl_line.__eq__(pl_line.curves) is NotImplemented


def test_chains_of_the_same_curves_are_equal_even_if_these_equal_nothing() -> None:
    curves = curves_through((0, math.nan), (1, 0))
    assert _CurveList(curves) == _CurveList(list(curves))
    assert _CurveList(curves) != _CurveList(curves_through((0, math.nan), (1, 0)))


def test_the_text_form_is_that_of_any_object() -> None:
    assert _Boundary.__repr__ is object.__repr__
    assert "_Boundary object at 0x" in repr(_Boundary([]))


def test_pl_lines_and_boundaries_add_nothing() -> None:
    for cls, text in ((_PlLine, " Piezometric level line. "), (_Boundary, " Boundary. ")):
        assert cls.__bases__ == (_CurveList,)
        assert cls.__doc__ == text
        assert {name for name in vars(cls) if not name.startswith("__")} == set()


def test_chains_behave_like_objects_of_any_class() -> None:
    chain: Any = _Boundary(curves_through(*STORY))
    for copied in (copy.deepcopy(chain), pickle.loads(pickle.dumps(chain))):
        assert copied == chain
        assert copied._curves is not chain._curves
    assert copy.copy(chain)._curves is chain._curves
    chain._curves = []
    assert chain.curves == vars(chain)["_curves"] == []
    del chain._curves
    with pytest.raises(AttributeError, match=r"^'_Boundary' object has no attribute '_curves'$"):
        _ = chain.curves
    with pytest.raises(AttributeError):
        del chain._curves
    assert isinstance(_CurveList.__dict__["curves"], property)


def test_operations_go_through_the_objects() -> None:
    class Lifted(_Point):
        @property
        def y(self) -> Any:
            return super().y + 1

    chain = _CurveList([_Curve(Lifted(0.0, 0.0), Lifted(10.0, 0.0))])
    assert chain.area_above_horizontal() == 10.0
