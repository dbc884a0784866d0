"""What the local worker makes of an input file."""

from dataclasses import dataclass

from sembra.local.jobs.reporting import ignore
from sembra.local.sli.input_file_error import InputFileError
from sembra.local.worker.calculate_file import calculate_file
from sembra.local.worker.failures import WorkerError


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
        _, remarks = calculate_file(text, ignore)
    except (InputFileError, WorkerError) as error:
        return Check(str(error))
    return Check("", tuple(remarks))
