"""The module with its real sister modules in interpreters that have a GIL of their own."""

import os
import subprocess
import sys
import textwrap

import pytest

STORY = """
import datetime
import sys
sys.path[:] = {path!r}
import sembra.external.dsettlement as d

for _ in range(20):
    model = d.Model1D(d.CalculationModel.NEN_KOPPEJAN, d.ConsolidationModel.TERZAGHI)
    model.update_geometry(-1.0, [(1.0, "Loam")])
    document = model._generate_input(d.Metadata(write_date=True, write_time=True))
assert document["geometry"]["bottom_level"] == -1.0
"""

# The main interpreter imports `datetime` first. Without that CPython 3.12.1 itself crashes where
# another interpreter does; with it, the others take the edition of `datetime` written in Python.
PROGRAM = """
import datetime
import sys
import threading
try:
    import _xxsubinterpreters as interpreters
except ImportError as error:
    print("no interpreters:", error)
    sys.exit(5)

def live() -> None:
    for _ in range(2):
        interpreter = interpreters.create()
        interpreters.run_string(interpreter, {story!r})
        interpreters.destroy(interpreter)

threads = [threading.Thread(target=live) for _ in range(3)]
for thread in threads:
    thread.start()
for thread in threads:
    thread.join()
exec({story!r})
print("done")
"""


def test_interpreters_at_work_at_the_same_time_have_the_real_sister_modules() -> None:
    program = PROGRAM.format(story=STORY.format(path=sys.path))
    # The debugging allocator of CPython 3.12.1 crashes with such interpreters, whatever they run.
    environment = dict(os.environ)
    if environment.get("PYTHONMALLOC") == "debug":
        del environment["PYTHONMALLOC"]
    done = subprocess.run(
        [sys.executable, "-X", "faulthandler", "-c", textwrap.dedent(program)],
        capture_output=True,
        text=True,
        timeout=300,
        env=environment,
        check=False,
    )
    if done.returncode == 5:
        pytest.skip(done.stdout.strip())
    assert (done.returncode, done.stdout, done.stderr) == (0, "done\n", "")
