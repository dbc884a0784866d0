"""
A polder road is raised
=======================

An old road on clay and peat is raised with sand in two stages, and paved. How far does it settle,
and how much of that after the opening? The model is that of ``examples/one_dimensional.py``.
"""

from sembra.external.dsettlement import DSettlementAnalysis
from sembra.local import pictures
from sembra.local.results import ResultFile

from examples import one_dimensional as story

model = story.build_model()
pictures.soil_column(model, datum="NAP")

# %%
# The calculation, and the settlement by each load with those before it:

analysis = DSettlementAnalysis(model.generate_input_file())
analysis.execute(timeout=60)
results = ResultFile(analysis.get_sld_file())

steps = [
    pictures.LoadStep(load.name, load.time, load.pressure) for load in story.LOADS if load.time >= 0
]
pictures.settlement_per_load(results, steps=steps)

# %%
# What is still to come after each calculation time:

residual = results.residual_times[1]
for time, rest in zip(residual["Time"], residual["Residual settlement"], strict=True):
    print(f"day {time:5.0f}: {rest:.3f} m")

# %%
# Before and after, along depth:

pictures.stresses(results)
