"""Runs the console edition of D-Settlement in place of the worker's own calculation.

The environment setting SEMBRA_DSETTLEMENT_CONSOLE names it: the path of the program, or a command
line in the syntax of a POSIX shell, for instance with an emulator in front of the program. The
worker writes the input file to a folder of its own, runs

    <command> /b input.sli

in that folder, and takes the results that stand there afterwards: input.sld, input.slo, input.err
and input.error.log. The calculation has succeeded when the program ends with exit code 0 and
input.sld exists.
"""

import os
import shlex
import subprocess
import tempfile
from pathlib import Path

from sembra.local.worker.failures import WorkerError

SETTING = "SEMBRA_DSETTLEMENT_CONSOLE"
RESULT_EXTENSIONS = (".sld", ".slo", ".err", ".error.log")
_STEM = "input"
_LONGEST_REASON = 2000


def configured_command() -> list[str]:
    """Return the command that the environment names, as arguments; empty if it names none.

    Raises:
        WorkerError: The setting is neither a file nor a command line.
    """
    setting = os.environ.get(SETTING, "").strip()
    if Path(setting).is_file():
        return [setting]
    try:
        return shlex.split(setting)
    except ValueError as error:
        raise WorkerError(f"{SETTING} is not a command line: {error}.") from None


def run_console(command: list[str], data: bytes) -> dict[str, bytes]:
    """Calculate an input file with a console program.

    Args:
        command: The program and what stands in front of `/b`.
        data: The input file.

    Returns:
        The result files by extension, ".sld" always among them.

    Raises:
        WorkerError: The program can't be started, fails, or leaves no results; the message holds
            what it wrote about it.
    """
    with tempfile.TemporaryDirectory(prefix="dsettlement-") as name:
        folder = Path(name)
        (folder / f"{_STEM}.sli").write_bytes(data)
        try:
            done = subprocess.run(
                [*command, "/b", f"{_STEM}.sli"],
                cwd=folder,
                stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE,
                stderr=subprocess.STDOUT,
                check=False,
            )
        except OSError as error:
            raise WorkerError(f"The D-Settlement console does not start: {error}.") from None
        files = {
            extension: path.read_bytes()
            for extension in RESULT_EXTENSIONS
            if (path := folder / f"{_STEM}{extension}").is_file()
        }
    if done.returncode != 0 or ".sld" not in files:
        raise WorkerError(_explain(done.returncode, done.stdout, files))
    return files


def _explain(code: int, output: bytes, files: dict[str, bytes]) -> str:
    reasons = (files.get(".err"), files.get(".error.log"), output)
    texts = (reason.decode(errors="replace").strip() for reason in reasons if reason)
    reason = next((text for text in texts if text), "it gives no reason")
    return f"The D-Settlement console fails with code {code}: {reason[:_LONGEST_REASON]}"
