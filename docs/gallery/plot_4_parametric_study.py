"""
How far apart may the drains stand?
===================================

Some of the 500 variants of ``examples/parametric_study.py``: stiffness of the clay, height of the
sand, spacing of the drains.
"""

from pathlib import Path
from tempfile import TemporaryDirectory

import matplotlib.pyplot as plt

from examples import parametric_study as study

with TemporaryDirectory() as folder:
    rows = study.calculate(study.variants(quick=True), Path(folder) / "study.csv")

# %%
# Settlement that is left at the opening, over all stiffnesses: from the least to the greatest.

figure, axes = plt.subplots(layout="constrained")
spreads = study.spreads(rows, study.COLUMNS[2])
for height in sorted({height for height, _ in spreads}):
    spacings = sorted(spacing for of, spacing in spreads if of == height)
    bands = [spreads[height, spacing] for spacing in spacings]
    axes.fill_between(
        spacings, [band.least for band in bands], [band.greatest for band in bands], alpha=0.2
    )
    axes.plot(
        spacings, [band.middle for band in bands], marker="o", label=f"{height:.1f} m of sand"
    )
axes.axhline(study.ALLOWED, linestyle="--", color="gray", label="Allowed")
axes.set(xlabel="Spacing of the drains [m]", ylabel="Residual settlement [m]")
axes.legend()
axes.grid(True, alpha=0.3)
