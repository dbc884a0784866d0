"""The worker's own calculation, from the text of an input file to that of its result file."""

import numpy as np

from sembra.local.jobs.reporting import Report
from sembra.local.worker.calculation import calculate
from sembra.local.worker.failures import OUT_OF_RANGE, WorkerError
from sembra.local.worker.input import read_project
from sembra.local.worker.remark import sentences
from sembra.local.worker.result import write_results


def calculate_file(text: str, report: Report) -> tuple[str, list[str]]:
    """Calculate an input file.

    Args:
        text: The `.sli` file.
        report: Takes the fraction done, from 0 to 1.

    Returns:
        The text of the `.sld` file, and what the user should know about the calculation, as a list
        of sentences.

    Raises:
        InputFileError: The file can't be read.
        WorkerError: It can't be calculated.
    """
    try:
        with np.errstate(over="raise", invalid="raise", divide="raise"):
            project = read_project(text)
            results = calculate(project, lambda fraction: report(0.9 * fraction))
            told = (*project.remarks, *(remark for one in results for remark in one.remarks))
            remarks = sentences(told)
            return write_results(text, project, results, remarks), remarks
    except ArithmeticError as error:
        raise WorkerError(OUT_OF_RANGE) from error
