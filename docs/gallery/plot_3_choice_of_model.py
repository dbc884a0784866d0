"""
What the choice of the model means
==================================

The embankment once more, by two soil models and both kinds of consolidation: how much settlement is
left at each time? ``examples/choice_of_model.py`` has the calculations.
"""

import matplotlib.pyplot as plt

from examples import choice_of_model as story

figure, axes = plt.subplots(layout="constrained")
for choice in story.CHOICES:
    outcome = story.calculate(choice)
    later = [place for place, time in enumerate(outcome.times) if time >= 100]
    axes.plot(
        [outcome.times[place] for place in later],
        [outcome.residual[place] for place in later],
        label=choice.name,
    )
axes.set(xscale="log", xlabel="Time [days]", ylabel="Residual settlement at the axis [m]")
axes.axvline(story.story.OPENING, linestyle="--", color="gray", label="Opening")
axes.legend()
axes.grid(True, alpha=0.3)
