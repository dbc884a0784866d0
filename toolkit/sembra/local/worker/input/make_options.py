"""The sections MODEL, CALCULATION OPTIONS, WATER and RESIDUAL TIMES, and what isn't covered."""

from sembra.local.sli.input_file_error import InputFileError
from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.sli.times import read_residual_times
from sembra.local.sli.water import read_water_unit_weight
from sembra.local.worker.ground.preconsolidation import PreconsolidationOption
from sembra.local.worker.options import Options, Superelevation
from sembra.local.worker.spreading.distribution import Distribution, Spreading


def make_options(whole: Section) -> Options:
    """Return the calculation options of the file.

    Raises:
        InputFileError: A section is malformed, or a value is out of range.
    """
    model = Labelled(whole.section("MODEL"))
    options = Labelled(whole.section("CALCULATION OPTIONS"))
    end = options.number("End of consolidation [days]")
    if end <= 0:
        raise options.error(
            "End of consolidation [days]", "the end of consolidation should lie after time 0"
        )
    reference_time = options.number("Reference time")
    if reference_time <= 0:
        raise options.error("Reference time", "the reference time should be greater than zero")
    code = options.code("Precon. pressure within a layer")
    if code not in list(PreconsolidationOption):
        raise options.error(
            "Precon. pressure within a layer", f"the preconsolidation option {code} is unknown"
        )
    drained = "Dispersion conditions layer boundaries"
    return Options(
        natural_strain=model.switch("Strain type"),
        preconsolidation=PreconsolidationOption(code),
        drained_top=options.switch(f"{drained} top"),
        drained_bottom=options.switch(f"{drained} bottom"),
        end=end,
        reference_time=reference_time,
        dissipation_x=(
            options.number("X co-ordinate dissipation") if options.switch("Dissipation") else None
        ),
        water_unit_weight=read_water_unit_weight(whole),
        each_step_alone=options.switch(
            "Predict settlements omitting additional loadsteps", absent=False
        ),
        submerging=options.switch("Submerging"),
        superelevation=(
            _read_superelevation(options) if options.switch("Maintain profile") else None
        ),
    )


def _read_superelevation(options: Labelled) -> Superelevation:
    time = options.number("Time superelevation")
    if time < 0:
        raise options.error("Time superelevation", f"the time should not be negative: {time:g}")
    return Superelevation(
        time,
        options.number("Gamma dry superelevation"),
        options.number("Gamma wet superelevation"),
        options.number("Iteration stop criteria desired profile [m]"),
    )


def make_spreading(whole: Section) -> Spreading:
    """Return how stress spreads below loads.

    Raises:
        InputFileError: The section is malformed, or a value is out of range.
    """
    options = Labelled(whole.section("CALCULATION OPTIONS"))
    return Spreading(
        distribution=Distribution(options.one_of("Stress distribution soil", list(Distribution))),
        within_loads=options.switch("Stress distribution loads", absent=False),
        non_uniform_width=_read_width(options, "non-uniform loads"),
        trapeziform_width=_read_width(options, "trapeziform loads"),
        imaginary_surface_width=_read_width(options, "imaginary surface"),
    )


def _read_width(options: Labelled, of: str) -> float:
    label = f"Load column width {of} [m]"
    width = options.number(label)
    if width <= 0:
        raise options.error(label, "the load column width should be greater than zero")
    return width


def read_times(whole: Section) -> tuple[float, ...]:
    """Return the times, in days, for which the file wants residual settlements.

    Raises:
        InputFileError: The section is malformed, or a time lies before the calculation.
    """
    times = read_residual_times(whole)
    for time in times:
        if time.days < 0:
            raise InputFileError(
                "RESIDUAL TIMES",
                time.line,
                f"the time {time.days:g} lies before the calculation",
            )
    return tuple(time.days for time in times)
