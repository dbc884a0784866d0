"""Dissipation by Darcy's law: how much of one load at time 0 the soil carries.

The degree of consolidation of an element is

    1 - u / q

with u its mean excess pore pressure and q what the load has added to its total stress; that of a
layer is the mean over its height. It is calculated in a run of its own, over the times of the
dissipation, with the drains and the water in them. A degree can fall, as creep makes new excess
pressure, and can pass 1, where drains draw the pressure below the initial one.

No theory says which load that should be. Published results show that D-Settlement starts from the
soil's own weight and brings all loads at time 0, initial ones too, as large as they are in the end;
that it brings more where they are small; and that, where the ground sinks into the water, the soil
does so in this run as well but the load doesn't.
"""

import numpy as np

from sembra.local.worker.arrays import Floats
from sembra.local.worker.consolidation.darcy.profile import make_profile
from sembra.local.worker.consolidation.darcy.run import DarcyRun
from sembra.local.worker.consolidation.darcy.sinking import SinkingSoil
from sembra.local.worker.consolidation.interface import Situation

LEAST_LOAD = 20.0
"""The tool counts with no smaller load, in kPa."""


def dissipation(
    unloaded: Situation, load: Floats, times: Floats, *, sinking: bool = False
) -> Floats:
    """Return the degree of consolidation of each layer, shape (layers, times); 0 at time 0.

    Args:
        unloaded: A column without any loads.
        load: Increase of the stress at the nodes by all loads in the end, in kPa.
        times: Times in days, from 0 on.
        sinking: Whether soil comes under water as the column settles.

    Raises:
        WorkerError: A layer can't consolidate.
    """
    s = unloaded
    least = np.maximum(load, LEAST_LOAD)
    soil = SinkingSoil(s)

    def loading(_step: int, settlements: Floats) -> Floats:
        return least + soil.loss(settlements[None])[0] if sinking else least

    (course,) = DarcyRun([make_profile(s)], type(s.model), s.options, times).run(loading)
    added = (course.loading[:, :-1] + course.loading[:, 1:]) / 2
    carried = np.ones_like(added)
    carried[0] = 0.0
    np.divide(added - course.mean_excess, added, out=carried, where=added > 0)
    return _means_of_layers(s, carried)


def _means_of_layers(s: Situation, values: Floats) -> Floats:
    """Return the mean of values of the elements over the height of each layer."""
    layers = np.arange(len(s.column.layers))[:, None]
    heights = s.mesh.thicknesses * (s.mesh.element_layers == layers)
    means: Floats = heights @ values.T / heights.sum(axis=1)[:, None]
    return means
