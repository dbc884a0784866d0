"""Runs the worker on a case and compares."""

import base64
import os
import time
from dataclasses import dataclass, field

from sembra.errors import ParsingError
from sembra.local.worker.job import run_job

from verification.cases import Case, read_text
from verification.comparing import Difference, compare, worst
from verification.layout import layout_difference
from verification.reading import Vertical, read_verticals

_CONSOLE = "SEMBRA_DSETTLEMENT_CONSOLE"


@dataclass(frozen=True)
class Outcome:
    """What came out for a case.

    `error` is the message of a job that the worker refused, or why its results can't be compared;
    then there are no differences. `layout` tells where the files' blocks differ, if they do.
    `seconds` is what the job took.
    """

    case: Case
    seconds: float
    error: str | None
    published: list[Vertical] = field(default_factory=list)
    ours: list[Vertical] = field(default_factory=list)
    differences: list[Difference] = field(default_factory=list)
    layout: str | None = None

    @property
    def worst(self) -> Difference | None:
        """The largest differences of all verticals; None where nothing could be compared."""
        if not self.differences:
            return None
        result = worst(self.differences)
        if self.layout:
            result.missing.append(self.layout)
        return result


def calculate(case: Case) -> Outcome:
    """Run the worker's own calculation on a case, and compare with the published results."""
    # A console edition would calculate instead, and be compared with itself.
    os.environ.pop(_CONSOLE, None)
    body = base64.b64encode(case.input_file.read_bytes()).decode("ascii")
    start = time.perf_counter()
    answer = run_job({"name": "dsettlement", "version": 1, "body": body})
    seconds = time.perf_counter() - start
    if answer["error"] is not None:
        return Outcome(case, seconds, answer["error"])
    try:
        text = read_text(case.result_file)
        our_text = base64.b64decode(answer["files"][".sld"]).decode()
        published, ours = read_verticals(text), read_verticals(our_text)
        differences = compare(published, ours)
        layout = layout_difference(text, our_text)
    except (ParsingError, ValueError, LookupError) as error:
        return Outcome(case, seconds, f"not comparable: {type(error).__name__}: {error}")
    return Outcome(case, seconds, None, published, ours, differences, layout)
