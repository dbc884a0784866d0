"""The kinds of consolidation, by their code in the input file."""

from collections.abc import Mapping

from sembra.local.worker.consolidation.darcy.consolidate import Darcy
from sembra.local.worker.consolidation.interface import Consolidation
from sembra.local.worker.consolidation.terzaghi.consolidate import Terzaghi

CONSOLIDATIONS: Mapping[int, Consolidation] = {0: Darcy(), 1: Terzaghi()}
