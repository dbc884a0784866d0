"""The way from a small model to its input file: serialised, posted as JSON, checked, filled in.

These are the benchmarks whose bound is a time. On a busy machine the waits of others come on top,
so the lower quartile counts; a wait that belongs to the way itself is part of every call.
"""

import subprocess
import sys
import time
from statistics import quantiles

from benchmarks.side_by_side import Row
from examples.one_dimensional import build_model

CALLS = 300
FRESH = 5

FIRST_CALL = """
import time
from examples.one_dimensional import build_model
model = build_model()
start = time.process_time()
model.generate_input_file()
print(time.process_time() - start)
"""


def rows() -> list[Row]:
    return [later_calls(), first_call()]


def later_calls() -> Row:
    model = build_model()
    model.generate_input_file()
    elapsed, worked = [], []
    for _ in range(CALLS):
        start, start_of_work = time.perf_counter(), time.process_time()
        model.generate_input_file()
        worked.append((time.process_time() - start_of_work) * 1e3)
        elapsed.append((time.perf_counter() - start) * 1e3)
    lower, median, _ = quantiles(elapsed)
    note = (
        f"least {min(elapsed):.2f} ms, median {median:.2f} ms; "
        f"of the processor {quantiles(worked)[1]:.2f} ms"
    )
    name = "generate_input_file of a small model after the first, milliseconds"
    return Row(name, lower, at_most=5.0, note=note)


def first_call() -> Row:
    """Return what the first call costs, with all that it loads, in a fresh interpreter."""
    times = sorted(
        float(subprocess.check_output([sys.executable, "-c", FIRST_CALL])) * 1e3
        for _ in range(FRESH)
    )
    name = "the first one, milliseconds of the processor"
    return Row(name, times[FRESH // 2], note=f"least {times[0]:.0f} ms")
