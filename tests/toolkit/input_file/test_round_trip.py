"""Each published input file, read into a model and generated again.

Whatever differs has been told, and is of a kind that is listed with its reason.
"""

from functools import cache
from pathlib import Path

import pytest
from sembra.local.input_file import ReadModel, read_model
from sembra.local.sli.whole_file import InputFile

from tests.toolkit.input_file.kinds import KINDS, kind_of
from tests.toolkit.input_file.untold import untold
from tests.toolkit.samples import all_input_files, needs_cases, needs_samples

EACH_FILE = pytest.mark.parametrize("path", all_input_files(), ids=lambda path: path.stem)

read = cache(read_model)


def generated(model: ReadModel) -> str:
    return model.generate_input_file().getvalue().decode()


@needs_samples
@EACH_FILE
def test_every_difference_is_told(path: Path) -> None:
    model = read(path)
    assert untold(InputFile.read(path), InputFile(generated(model)), model.left_out) == []


@needs_samples
@EACH_FILE
def test_all_that_is_left_out_is_of_a_kind(path: Path) -> None:
    assert [str(one) for one in read(path).left_out if kind_of(one) is None] == []


@needs_samples
@EACH_FILE
def test_the_generated_file_is_generated_again(path: Path, tmp_path: Path) -> None:
    once = generated(read(path))
    copy = tmp_path / "copy.sli"
    copy.write_text(once, "utf-8")
    again = read_model(copy)
    assert again.left_out == ()
    assert generated(again) == once


@needs_samples
@EACH_FILE
def test_a_result_file_repeats_its_input(path: Path) -> None:
    model = read_model(path.with_suffix(".sld"))
    assert model.model._serialize() == read(path).model._serialize()
    assert below_header(model) == below_header(read(path))


def below_header(model: ReadModel) -> list[tuple[str, str]]:
    """What is left out, without what a file has of its own: its date and time."""
    return [(one.what, one.value) for one in model.left_out if one.section != "header"]


@needs_cases
def test_every_kind_is_there() -> None:
    seen = {kind_of(one) for path in all_input_files() for one in read(path).left_out}
    assert [kind for kind in KINDS if kind not in seen] == []
