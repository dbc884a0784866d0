"""Embankments made for the tests of the worker."""

from sembra.local.worker.ground.polyline import Polyline
from sembra.local.worker.loads.non_uniform import Embankment, Site
from sembra.local.worker.spreading.distribution import Distribution, Spreading

from tests.toolkit.worker.input_file import calculated
from tests.toolkit.worker.result_file import verticals

FLAT = Polyline(((0.0, 0.0), (100.0, 0.0)))
DEEP = Polyline(((0.0, -50.0), (100.0, -50.0)))


def site(phreatic_line: Polyline = DEEP, surface: Polyline = FLAT) -> Site:
    """Level ground with water far below, where nothing else is told."""
    return Site(surface, phreatic_line, 10.0, spreading())


def spreading(
    distribution: Distribution = Distribution.BOUSSINESQ,
    width: float = 0.5,
    *,
    within: bool = False,
) -> Spreading:
    """Half-metre columns."""
    return Spreading(distribution, within, width, width, width)


def embankment(
    *points: tuple[float, float], time: float = 0, removal: float | None = None
) -> Embankment:
    """A dike of 18 and 20 kN/m³ below an outline."""
    return Embankment("Dike", time, removal, 18.0, 20.0, Polyline(points))


WIDE = """Wide
           {time}        15.00        15.00   {temporary}       {end} = Time, Gamma dry, Gamma wet
    4 = Number of co-ordinates
       0.000        0.000 = X, Y
       0.000        {top:.3f} = X, Y
     100.000        {top:.3f} = X, Y
     100.000        0.000 = X, Y
"""


WIDE_EVERYWHERE = """Wide
           0        20.00        20.00   0       0 = Time, Gamma dry, Gamma wet
    4 = Number of co-ordinates
   -2000.000        0.000 = X, Y
   -2000.000        1.500 = X, Y
    2000.000        1.500 = X, Y
    2000.000        0.000 = X, Y
"""


def wide(*, time: float = 0, temporary: object = 0, end: object = 0, top: float = 2.0) -> str:
    """The lines of a load over all of the ground."""
    return WIDE.format(time=time, temporary=temporary, end=end, top=top)


def with_embankments(text: str, *loads: str) -> str:
    """A file with other non-uniform loads."""
    before, _, rest = text.partition("[NON-UNIFORM LOADS]\n")
    after = rest.partition("[END OF NON-UNIFORM LOADS]\n")[2]
    blocks = f"{len(loads)} = number of items\n{''.join(loads)}"
    return f"{before}[NON-UNIFORM LOADS]\n{blocks}[END OF NON-UNIFORM LOADS]\n{after}"


def with_embankment(text: str, temporary: object = 0, end: object = 0) -> str:
    """A file with one load over all of the ground."""
    return with_embankments(text, wide(temporary=temporary, end=end))


def without_uniform_load(text: str) -> str:
    """A file without its other loads."""
    before, _, rest = text.partition("[OTHER LOADS]\n")
    after = rest.partition("[END OF OTHER LOADS]\n")[2]
    return f"{before}[OTHER LOADS]\n0\n[END OF OTHER LOADS]\n{after}"


def settlements(text: str) -> list[list[float]]:
    """Settlement of the second vertical by the first load step, the first two, and so on."""
    columns: list[list[float]] = verticals(calculated(text))[1]["per_load"]
    return columns
