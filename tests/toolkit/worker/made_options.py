"""Calculation options made for the tests of the worker."""

from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.options import Options


def options(
    *,
    natural: bool = False,
    preconsolidation: PreconsolidationOption = PreconsolidationOption.CONSTANT,
    top: bool = True,
    bottom: bool = True,
    reference_time: float = 1.0,
    end: float = 10000.0,
) -> Options:
    """Options with linear or natural strain, and drained or undrained boundaries."""
    return Options(
        natural_strain=natural,
        preconsolidation=preconsolidation,
        drained_top=top,
        drained_bottom=bottom,
        end=end,
        reference_time=reference_time,
        dissipation_x=None,
        water_unit_weight=10.0,
    )
