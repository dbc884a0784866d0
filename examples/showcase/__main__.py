"""Tells every story and writes its files: python -m examples.showcase [folder]."""

import argparse
from pathlib import Path

from examples.showcase import (
    tell_choice_of_model,
    tell_one_dimensional,
    tell_parametric_study,
    tell_two_dimensional,
)
from examples.showcase.terminal import Terminal

STORIES = (
    tell_one_dimensional.tell,
    tell_two_dimensional.tell,
    tell_choice_of_model.tell,
    tell_parametric_study.tell,
)


def main() -> None:
    """Tell the stories one after the other."""
    parser = argparse.ArgumentParser(prog="python -m examples.showcase", description=__doc__)
    parser.add_argument(
        "folder",
        type=Path,
        nargs="?",
        default=Path("demo"),
        help="where the files go (%(default)s)",
    )
    folder: Path = parser.parse_args().folder
    folder.mkdir(parents=True, exist_ok=True)
    terminal = Terminal()
    for tell in STORIES:
        tell(terminal, folder)


if __name__ == "__main__":
    main()
