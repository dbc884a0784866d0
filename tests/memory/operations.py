"""What is done while memory runs out: every public operation, on models of several kinds.

An `Operation` has a subject that is made anew for each try, and an act on it. The act's answer and
the subject's state are compared with those of an undisturbed try.
"""

import copy
import functools
import importlib.util
import pickle
import types
from base64 import b64encode
from collections.abc import Callable
from dataclasses import dataclass
from io import BytesIO, StringIO
from typing import Any

import sembra.core
import sembra.external.dsettlement as dsettlement
from sembra.core import Color
from sembra.external.dsettlement import (
    CalculationModel,
    ConsolidationModel,
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    DSettlementAnalysis,
    Metadata,
    Model1D,
    Model2D,
    OutputFileParser,
    VerticalDrain,
)
from sembra.local.worker.failures import OUT_OF_RANGE

from tests.geometry.random_models_2d import Description
from tests.output import blocks

BLACK = Color(0, 0, 0)  # the default is a random one


@dataclass(frozen=True)
class Operation:
    """Something an application does."""

    name: str
    subject: Callable[[], Any]
    act: Callable[[Any], Any]
    # Whether an act that fails may leave a boundary or a vertical behind, as a plain Python class
    # would: one that comes before the failure, and in a model that is searched one that is not in
    # its place yet.
    leaves: bool = False
    leaves_unordered: bool = False
    # The interpreter crashes where its memory runs out for a function that is made on the way, as
    # `copy.deepcopy` makes them; its own code then, so that only the memory of C++ can run out.
    makes_functions: bool = False


class Searched(Model2D):
    """A model whose classes go other ways, so that it is searched."""

    def _create_curve(self, p1: Any, p2: Any) -> Any:
        return super()._create_curve(p1, p2)


def drain() -> VerticalDrain:
    return VerticalDrain(
        DrainType.STRIP,
        5.0,
        90.0,
        -0.5,
        2.0,
        0.1,
        thickness=0.003,
        grid=DrainGrid.TRIANGULAR,
        start_of_drainage=0.0,
        phreatic_level_in_drain=-1.0,
    )


def column() -> Any:
    model = Model1D(
        CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI, False, vertical_drain=drain()
    )
    model.create_material("clay", 14.0, 14.0, cp=30.0, color=BLACK)
    model.update_geometry(-1.0, [(1.0, "clay"), (0.0, "clay")], phreatic_level=0.5)
    model.create_uniform_load("sand", 0, 18.0, 1.5, 0.0)
    model.set_calculation_times(1, 10, 100)
    return model


def points(model: Any, *pairs: tuple[float, float]) -> list[Any]:
    return [model.create_point(x, y) for x, y in pairs]


def level(model: Any, y: float) -> list[Any]:
    return points(model, (0.0, y), (50.0, y + 0.5), (100.0, y))


class Section:
    """A two-dimensional model with points that are ready for the next call."""

    def __init__(
        self,
        cls: Any = Model2D,
        pl_lines: int = 2,
        phreatic: int | None = 0,
        looked_at: bool = False,
    ) -> None:
        self.model = cls(
            CalculationModel.NEN_KOPPEJAN,
            ConsolidationModel.TERZAGHI,
            [(0.0, 0.0), (100.0, 0.0)],
            False,
        )
        self.model.create_material("clay", 14.0, 14.0, color=BLACK)
        lines = [
            self.model.create_pl_line(level(self.model, y), y == phreatic) for y in range(pl_lines)
        ]
        for y in (4.0, 2.0, 6.0):
            self.model.create_layer(level(self.model, y), "clay", lines[0], lines[-1])
        for x in (50.0, 25.0, 75.0):
            self.model.create_vertical(x)
        self.points = level(self.model, 5.25)
        self.known_points = level(self.model, 2.0)
        self.known_pl_points = level(self.model, 1)
        if looked_at:
            vars(self.model)


SECTIONS: dict[str, Callable[[], Section]] = {
    "registered": Section,
    "looked at": lambda: Section(looked_at=True),
    "searched": lambda: Section(Searched),
    "without a phreatic line": lambda: Section(phreatic=None),
    # With numbers that the interpreter has to make first.
    "of 300 pl-lines": lambda: Section(pl_lines=300, phreatic=None),
}


def described(thing: Any) -> Any:
    """What an answer or a subject is, in a form that can be compared."""
    if isinstance(thing, Section):
        return described(thing.model)
    if isinstance(thing, dsettlement._Model):
        return (
            Description(thing).text,
            repr(attempted(thing._generate_input)),
            repr(thing._serialize()),
        )
    if isinstance(thing, BytesIO | StringIO):
        return thing.getvalue()
    if isinstance(thing, types.FunctionType):
        return thing.__name__
    if isinstance(thing, types.ModuleType):
        return sorted(vars(thing))
    if isinstance(thing, VerticalDrain | Metadata):
        return repr(thing._serialize())
    shown = repr(thing)
    return type(thing) if " object at 0x" in shown else shown


def import_again() -> Any:
    found = importlib.util.find_spec(dsettlement.__name__)
    assert found is not None
    assert found.origin is not None
    spec = importlib.util.spec_from_file_location(found.name, found.origin)
    assert spec is not None
    assert spec.loader is not None
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def result_text() -> str:
    """A small result text with all that is read of one."""
    return blocks.results(
        blocks.vertical(
            "  1  =  Vertical number",
            blocks.time_settlement("  1.0  0.1  0.2", "  2.0  0.3  0.4"),
            blocks.stresses(("Depth", "Stress"), "  1.0  2.0", "  3.0  4.0"),
            blocks.time_dependent(
                ("Depth", "Settlement"), blocks.at_time("10", "  1.0  2.0", "  2.0  0.123456")
            ),
        ),
        blocks.residuals(("Vertical", "Time", "Settlement"), "1 1.0 0.5", "2 2.0 0.6"),
    )


def read_results(parser: Any) -> Any:
    return parser.raw_results, parser.vertical_results, parser.residual_times


def attempted(act: Callable[..., Any], *arguments: Any, **keywords: Any) -> Any:
    """The answer of an act, or what its refusal says.

    The act is no function made on the spot: the interpreter crashes where memory runs out for one.
    """
    try:
        return act(*arguments, **keywords)
    except MemoryError:
        raise
    except Exception as error:
        return f"{type(error).__name__}: {error}"


def on_sections() -> list[Operation]:
    """The operations of two-dimensional models, on each kind of them."""
    acts: dict[str, Callable[[Any], Any]] = {
        "create_point": lambda s: s.model.create_point(1.5, 2.5),
        "create_pl_line": lambda s: s.model.create_pl_line(s.points),
        "create_pl_line, phreatic": lambda s: s.model.create_pl_line(s.points, True),
        "create_pl_line, known": lambda s: s.model.create_pl_line(s.known_pl_points),
        "create_layer": lambda s: s.model.create_layer(s.points, "clay", 0, 99),
        "create_layer, known": lambda s: s.model.create_layer(s.known_points, "clay", 0, 99),
        "create_layer, refused": lambda s: attempted(s.model.create_layer, s.points, "mud", 0, 99),
        "create_vertical": lambda s: s.model.create_vertical(33.0),
        "create_vertical, known": lambda s: s.model.create_vertical(25.0),
        "create_non_uniform_load": lambda s: s.model.create_non_uniform_load(
            "dam", [(0.0, 6.0), (50.0, 9.0), (100.0, 6.0)], 0, 10
        ),
        "_generate_input": lambda s: attempted(s.model._generate_input),
        "_validate": lambda s: attempted(s.model._validate),
        "_curves": lambda s: s.model._curves,
        "copy": lambda s: copy.copy(s.model),
        "take apart": lambda s: len(s.model.__reduce_ex__(4)),
        "deepcopy": lambda s: copy.deepcopy(s.model),
        "pickle": lambda s: pickle.loads(pickle.dumps(s.model)),
        "vars": lambda s: len(vars(s.model)),
    }
    return [
        Operation(
            f"{what}, section {kind}",
            section,
            act,
            leaves=what == "create_layer",
            leaves_unordered=kind == "searched" and what in ("create_layer", "create_vertical"),
            makes_functions=what == "deepcopy",
        )
        for kind, section in SECTIONS.items()
        for what, act in acts.items()
        # A refused phreatic line leaves the pl-line, so that another try is another thing.
        if (what != "create_pl_line, phreatic" or section().model._phreatic_line == 0)
        # Of 300 pl-lines it is 19,000 allocations, of which the other kinds have one of each sort.
        and (what, kind) != ("pickle", "of 300 pl-lines")
    ]


def on_columns() -> list[Operation]:
    """The operations of one-dimensional models, and those that all models have."""
    acts: dict[str, Callable[[Any], Any]] = {
        "create_material": lambda m: m.create_material("mud", 1.0, 2.0, color=BLACK, cohesion=3.0),
        "create_material, refused": lambda m: attempted(m.create_material, "clay", 1.0, 2.0),
        "create_uniform_load": lambda m: m.create_uniform_load("dam", 1, 2.0, 3.0, 4.0),
        "update_geometry": lambda m: m.update_geometry(-2.0, [(1.0, "clay")], phreatic_level=0.0),
        "update_geometry, refused": lambda m: attempted(m.update_geometry, 2.0, []),
        "set_calculation_times": lambda m: m.set_calculation_times(5, 6),
        "properties": lambda m: (
            *(m.layers, len(m.verticals), list(m.materials)),
            *(m.top_level, m.bottom_level, m.phreatic_level),
        ),
        "_generate_input": lambda m: m._generate_input(),
        "generate_input_file": lambda m: m.generate_input_file(Metadata("a", "b")),
        "copy": copy.copy,
        "deepcopy": copy.deepcopy,
        "pickle": lambda m: pickle.loads(pickle.dumps(m)),
        "a wrong call": lambda m: attempted(m.update_geometry, 1, 2, 3, unknown=4),
    }
    return [
        Operation(f"{what}, column", column, act, makes_functions=what == "deepcopy")
        for what, act in acts.items()
    ]


def on_nothing() -> list[Operation]:
    """What needs no model to begin with."""
    acts: dict[str, Callable[[], Any]] = {
        "import": import_again,
        "make a column": column,
        "make a section": Section,
        "make a drain": drain,
        "make a schedule": lambda: DrainageSimpleMode(1.0, 2.0, 3.0, 4.0),
        "make metadata": lambda: Metadata("a", "b", write_date=False),
        "make an analysis": lambda: DSettlementAnalysis(BytesIO(b"abc")),
        "make a parser": lambda: OutputFileParser(StringIO(result_text())).raw_results,
    }
    return [Operation(name, functools.partial(identity, act), run) for name, act in acts.items()]


def on_records() -> list[Operation]:
    """What is done with the smaller objects."""
    wide = result_text().replace("Depth", "Diepte \u2192 \U0001f30d")
    return [
        Operation("serialise a drain", drain, lambda d: (d.position_drain, d._serialize())),
        Operation("pickle a drain", drain, lambda d: pickle.loads(pickle.dumps(d))),
        Operation(
            "make a job", lambda: DSettlementAnalysis(BytesIO(b"abc")), lambda a: job_body(a)
        ),
        Operation("take results", finished_job, lambda a: a.get_sld_file()),
        Operation("take results as a file", finished_job, lambda a: a.get_sld_file(as_file=True)),
        Operation("take an output", finished_job, lambda a: a.get_output_file(".err")),
        Operation(
            "take an output that is not there",
            finished_job,
            lambda a: attempted(a.get_output_file, ".txt"),
        ),
        Operation(
            "tell an error",
            finished_job,
            lambda a: attempted(a._handle_execution_error, OUT_OF_RANGE),
        ),
        Operation("read", lambda: OutputFileParser(StringIO(result_text())), read_results),
        Operation("read wide", lambda: OutputFileParser(StringIO(wide)), read_results),
        Operation(
            "pickle points",
            lambda: level(Section().model, 7.0),
            lambda p: pickle.loads(pickle.dumps(p)),
        ),
        Operation("compare points", lambda: level(Section().model, 7.0), lambda p: p == list(p)),
    ]


def finished_job() -> Any:
    """An analysis as it is after `execute`."""
    analysis = DSettlementAnalysis(BytesIO(b"abc"))
    files = {".sld": b64encode(b"text").decode(), ".err": b64encode(b"warning").decode()}
    analysis._result_content = {"files": files, "error": None}
    return analysis


def identity(act: Callable[[], Any]) -> Any:
    """An act that is its own subject."""
    return act


def run(act: Callable[[], Any]) -> Any:
    return act()


def job_body(analysis: Any) -> Any:
    return analysis._generate_job_content().body


def answer_in_place_of_the_service() -> None:
    """Keep documents in the process."""
    answer = {"input_file": "text"}
    vars(sembra.core)["_post_on_addon_endpoint"] = lambda *_args, **_options: answer


OPERATIONS = [*on_nothing(), *on_records(), *on_columns(), *on_sections()]
