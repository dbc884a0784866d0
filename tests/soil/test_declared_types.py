"""The types that classes declare for their attributes, which type checkers and editors go by."""

import pytest
import sembra.external.dsettlement as ds

DRAINAGE = "begin_time end_time underpressure dewatering_head_or_pressure"
DRAIN = "range_from range_to bottom_position center_to_center width_diameter"


@pytest.mark.parametrize(
    ("declaring", "types"),
    [
        (ds.DrainageSimpleMode, dict.fromkeys(DRAINAGE.split(), "float")),
        (ds.VerticalDrain, dict.fromkeys(DRAIN.split(), "float")),
        (ds._Material, {"gam_dry": "float", "gam_wet": "float"}),
        (
            ds._UniformLoad,
            {"time": "int", "unit_weight": "float", "height": "float", "y_application": "float"},
        ),
    ],
)
def test_attributes_have_their_types(declaring: type, types: dict[str, str]) -> None:
    assert declaring.__annotations__ == types
