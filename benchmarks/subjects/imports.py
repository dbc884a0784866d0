"""Importing the module, against importing its plain Python equivalents.

Both find their sister modules and the standard library loaded already, and the plain modules their
compiled byte code; the cache of `re` is emptied, since both compile the patterns of the format.
"""

import importlib
import re
import sys
from importlib.util import module_from_spec

import sembra.external.dsettlement as module

from benchmarks.side_by_side import Row, compare

PLAIN = ("materials", "chains", "geometry", "output_parser")
TIMES = 5


def import_native() -> None:
    spec = module.__spec__
    assert spec is not None
    assert spec.loader is not None
    for _ in range(TIMES):
        re.purge()
        fresh = module_from_spec(spec)
        spec.loader.exec_module(fresh)


def import_plain() -> None:
    for _ in range(TIMES):
        re.purge()
        for name in PLAIN:
            sys.modules.pop(f"benchmarks.plain.{name}", None)
            importlib.import_module(f"benchmarks.plain.{name}")


def rows() -> list[Row]:
    return [compare("import: plain : native", import_plain, import_native, at_least=1.0)]
