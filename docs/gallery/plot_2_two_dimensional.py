"""
An embankment upon drains
=========================

Sand on soft layers in two stages, strip drains below it, and a surcharge that goes again: the model
of ``examples/two_dimensional.py``.
"""

from sembra.external.dsettlement import DSettlementAnalysis
from sembra.local import pictures
from sembra.local.results import ResultFile

from examples import two_dimensional as story

model = story.build_project().model
pictures.cross_section(model, datum="NAP", pl_line_names=["head in the sand"])

# %%
# The surface at each vertical:

analysis = DSettlementAnalysis(model.generate_input_file())
analysis.execute(timeout=60)
results = ResultFile(analysis.get_sld_file())
pictures.settlement_per_vertical(results, names=list(story.VERTICALS.values()))

# %%
# Below the axis, along depth:

axis = list(story.VERTICALS.values()).index("axis") + 1
pictures.settlement_along_depth(results, vertical=axis)
