"""The kinds of consolidation, by their code in the input file."""

from collections.abc import Mapping

from sembra.local.worker.consolidation.consolidation import Consolidation
from sembra.local.worker.consolidation.darcy.consolidate import consolidate as by_darcy
from sembra.local.worker.consolidation.terzaghi.consolidate import consolidate as by_terzaghi

CONSOLIDATIONS: Mapping[int, Consolidation] = {0: by_darcy, 1: by_terzaghi}
