"""Pictures of models and results.

Each takes a model or results, draws on the given axes or on a figure of its own, and returns the
axes. In a notebook the picture appears below the cell; in a program, `save(axes,
"picture.png")` writes it. matplotlib has to be installed
(`pip install matplotlib`).
"""

from sembra.local.pictures.column import soil_column
from sembra.local.pictures.depth import settlement_along_depth, stresses
from sembra.local.pictures.dissipation import dissipation
from sembra.local.pictures.load_step import LoadStep
from sembra.local.pictures.section import cross_section
from sembra.local.pictures.settlement import settlement_per_load, settlement_per_vertical
from sembra.local.pictures.style import save

__all__ = [
    "LoadStep",
    "cross_section",
    "dissipation",
    "save",
    "settlement_along_depth",
    "settlement_per_load",
    "settlement_per_vertical",
    "soil_column",
    "stresses",
]
