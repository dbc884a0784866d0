"""The module is imported twice in one process, and in interpreters of its own."""

import gc
import importlib.util
import subprocess
import sys
import textwrap
import types
import weakref
from typing import Any

import pytest
from sembra.errors import ModelError

NAME = "sembra.external.dsettlement"

# What the sister modules import need not work in every interpreter, so stand-ins take their place.
STAND_INS = """
import sys, types
sys.path[:] = {path!r}

class Error(Exception): pass
class Color:
    def __init__(self, code): self.deltares = code
    @classmethod
    def random(cls): return cls(1)
    @classmethod
    def from_deltares(cls, code): return cls(code)
class File:
    @classmethod
    def from_data(cls, data): return data
class ExternalProgram:
    def __init__(self, name, *, version): self.made_with = (name, version)
class Content:
    def __init__(self, body): self.body = body

errors = types.ModuleType("sembra.errors")
for name in ("ModelError", "ParsingError", "InternalError"):
    setattr(errors, name, type(name, (Exception,), {{}}))
core = types.ModuleType("sembra.core")
core.Color, core.File = Color, File
core._post_on_addon_endpoint = lambda path, body, timeout: {{"input_file": repr(body)}}
program = types.ModuleType("sembra.external.external_program")
program.ExternalProgram, program._JobContent = ExternalProgram, Content
program._dseries_exception_map = {{}}
program._get_dseries_file_body = lambda content, extension: None
for module in (errors, core, program):
    sys.modules[module.__name__] = module
"""

STORY = """
import io
from sembra.errors import ModelError
import sembra.external.dsettlement as d

model = d.Model1D(d.CalculationModel.NEN_KOPPEJAN, d.ConsolidationModel.TERZAGHI)
model.create_material("clay", 1.0, 2.0, cohesion=3.0)
model.update_geometry(-1.0, [(1.0, "clay")])
assert b"'cohesion': 3.0" in model.generate_input_file().getvalue()
assert d.DSettlementAnalysis(io.BytesIO(b"abc"))._generate_job_content().body == "YWJj"
try:
    model.update_geometry(1.0, [])
except ModelError as error:
    assert str(error) == "Provide at least 1 layer"
else:
    raise AssertionError("not refused")
"""

# Python 3.12.1 itself crashes if another interpreter than the main one is the first to use these.
INTERPRETERS = """
import base64, datetime, sys
base64.b64encode(b"")
try:
    import _xxsubinterpreters as interpreters
    first = interpreters.create()
except (ImportError, RuntimeError) as error:
    print("no interpreters:", error)
    sys.exit(5)
second = interpreters.create()
for interpreter in (first, second):
    interpreters.run_string(interpreter, {stand_ins!r})
    interpreters.run_string(interpreter, {story!r})
interpreters.run_string(first, {story!r})
interpreters.destroy(first)
interpreters.run_string(second, {story!r})
exec({stand_ins!r})
exec({story!r})
interpreters.destroy(second)
exec({story!r})
print("done")
"""


def run(program: str) -> subprocess.CompletedProcess[str]:
    """Run a program in a process of its own."""
    return subprocess.run(
        [sys.executable, "-c", program], capture_output=True, text=True, timeout=60, check=False
    )


def import_again() -> types.ModuleType:
    """Make a second module of the same name that is independent of the first."""
    spec = importlib.util.find_spec(NAME)
    assert spec is not None
    assert spec.loader is not None
    fresh = importlib.util.spec_from_file_location(
        NAME, spec.origin, loader=spec.loader, submodule_search_locations=[]
    )
    assert fresh is not None
    module = importlib.util.module_from_spec(fresh)
    assert fresh.loader is not None
    fresh.loader.exec_module(module)
    return module


def story(module: Any) -> Any:
    """A model of the module's own."""
    model = module.Model1D(module.CalculationModel.NEN_KOPPEJAN, module.ConsolidationModel.TERZAGHI)
    model.update_geometry(-1.0, [(1.0, "Loam")])
    return model


def test_interpreters_of_their_own_get_modules_of_their_own() -> None:
    stand_ins = STAND_INS.format(path=sys.path)
    finished = run(INTERPRETERS.format(stand_ins=stand_ins, story=STORY))
    if finished.returncode == 5:
        pytest.skip(finished.stdout.strip())
    assert finished.returncode == 0, finished.stderr
    assert finished.stdout == "done\n"


def test_a_second_module_in_one_process_is_independent_of_the_first() -> None:
    import sembra.external.dsettlement as first

    second: Any = import_again()
    assert second is not first
    assert second.__name__ == NAME
    for name in [*first.__all__, "_Model", "_Material"]:
        assert getattr(second, name) is not getattr(first, name)
    assert not isinstance(story(second), first.Model1D)
    assert story(second)._generate_input() == story(first)._generate_input()
    with pytest.raises(KeyError):
        second.Model1D(first.CalculationModel.ISOTACHE, first.ConsolidationModel.DARCY)


def test_modules_share_what_the_sister_modules_hold(post: Any) -> None:
    second: Any = import_again()
    story(second).generate_input_file()
    assert len(post.calls) == 1
    with pytest.raises(ModelError):
        story(second).update_geometry(-1.0, [])


def test_a_stand_in_in_one_module_does_not_touch_the_other(post: Any) -> None:
    import sembra.external.dsettlement as first

    second: Any = import_again()
    second._post_on_addon_endpoint = lambda *args, **options: {"input_file": "second"}
    second._Model._validate = lambda self: None
    assert story(second).generate_input_file().getvalue() == b"second"
    assert story(first).generate_input_file().getvalue() != b"second"
    assert first._Model._validate is not second._Model._validate


def test_a_module_that_nobody_holds_goes_with_all_its_classes() -> None:
    second: Any = import_again()
    model = story(second)
    model.itself = model
    references = [weakref.ref(second.Model1D), weakref.ref(second.VerticalDrain)]
    del second, model
    for _ in range(3):
        gc.collect()
    assert [reference() for reference in references] == [None, None]


def test_importing_again_and_again_does_not_grow_the_process() -> None:
    def blocks_after(rounds: int) -> int:
        for _ in range(rounds):
            story(import_again())._generate_input()
        for _ in range(3):
            gc.collect()
        return sys.getallocatedblocks()

    before = blocks_after(3)
    assert blocks_after(10) - before < 1000


def test_objects_outlive_the_names_of_their_module() -> None:
    second: Any = import_again()
    model = story(second)
    vars(second).pop("Model1D")
    del second
    gc.collect()
    assert model._generate_input()["geometry"]["bottom_level"] == -1.0
    assert type(model)(model._calculation_model, model._consolidation_model).top_level == 0.0


def test_the_process_ends_cleanly_with_objects_alive() -> None:
    finished = run(
        textwrap.dedent(
            """
            import sembra.external.dsettlement as d

            class Model(d.Model1D):
                def __del__(self):
                    self._geometry._serialize()

            model = Model(d.CalculationModel.ISOTACHE, d.ConsolidationModel.DARCY)
            model.itself = model
            kept = model.create_material
            print("end")
            """
        )
    )
    assert (finished.returncode, finished.stdout, finished.stderr) == (0, "end\n", "")
