"""What the local worker makes of an input file."""

from dataclasses import dataclass

import numpy as np

from sembra.local.sli.input_file_error import InputFileError
from sembra.local.worker.calculation import calculate
from sembra.local.worker.failures import OUT_OF_RANGE, WorkerError
from sembra.local.worker.input import read_project


@dataclass(frozen=True)
class Check:
    """What the worker says.

    Args:
        refusal: Why it doesn't calculate the file, as whole sentences; empty if it does.
        remarks: What it says of the calculation, each a whole sentence.
    """

    refusal: str
    remarks: tuple[str, ...] = ()

    @property
    def verdict(self) -> str:
        """The outcome as a sentence."""
        if self.refusal:
            return f"The local worker refuses this file. {self.refusal}"
        return "The local worker calculates this file."


def check(text: str) -> Check:
    """Calculate an input file with the local worker, and say what comes of it.

    Args:
        text: An input file, or a result file, which repeats its input.
    """
    try:
        with np.errstate(over="raise", invalid="raise", divide="raise"):
            project = read_project(text)
            results = calculate(project, lambda _fraction: None)
    except (InputFileError, WorkerError) as error:
        return Check(str(error))
    except ArithmeticError:
        return Check(OUT_OF_RANGE)
    told = [*project.remarks, *(remark for result in results for remark in result.remarks)]
    return Check("", tuple(dict.fromkeys(told)))
