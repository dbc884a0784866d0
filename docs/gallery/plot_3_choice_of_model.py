"""
What the choice of the model means
==================================

The embankment once more, by two soil models and both kinds of consolidation: how much settlement is
left at each time? ``examples/choice_of_model.py`` has the calculations.
"""

from sembra.local.pictures.style import (
    LOAD,
    curve_style,
    draw_grid,
    look,
    new_figure,
    prepare_time_axis,
    write_legend,
)

from examples import choice_of_model as story

with look():
    axes = new_figure(8.0, 5.0).add_subplot()
    for number, choice in enumerate(story.CHOICES):
        outcome = story.calculate(choice)
        later = [place for place, time in enumerate(outcome.times) if time >= 100]
        color, line = curve_style(number)
        axes.plot(
            [outcome.times[place] for place in later],
            [outcome.residual[place] for place in later],
            color=color,
            linestyle=line,
            label=choice.name,
        )
    axes.set_title("Residual settlement at the axis", loc="left", pad=12)
    axes.set_ylabel("Residual settlement [m]")
    axes.axvline(story.story.OPENING, color=LOAD, linestyle="--", linewidth=0.9, label="Opening")
    prepare_time_axis(axes, 100, 10_000)
    draw_grid(axes)
    write_legend(axes)
