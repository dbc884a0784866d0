"""`_Layer`."""

from typing import Any

import pytest
from sembra.external.dsettlement import _Boundary, _Layer, _PlLine

NAMES = ("boundary_top", "boundary_bottom", "material", "pl_line_top", "pl_line_bottom")


def test_five_values_are_kept_and_nothing_is_checked() -> None:
    values: dict[str, Any] = {name: object() for name in NAMES}
    layer = _Layer(**values)
    assert vars(layer) == {f"_{name}": value for name, value in values.items()}
    for name, value in values.items():
        assert getattr(layer, name) is value
        with pytest.raises(AttributeError):
            setattr(layer, name, None)


def test_all_values_are_demanded() -> None:
    with pytest.raises(
        TypeError, match=r"missing 1 required positional argument: 'pl_line_bottom'"
    ):
        _Layer(_Boundary([]), _Boundary([]), "Sand", 0)  # type: ignore[call-arg]


def test_a_layer_equals_itself_alone() -> None:
    values: Any = (_Boundary([]), _Boundary([]), "Sand", _PlLine([]), 99)
    assert _Layer(*values) != _Layer(*values)
    assert _Layer.__eq__ is object.__eq__
    assert _Layer.__hash__ is object.__hash__
