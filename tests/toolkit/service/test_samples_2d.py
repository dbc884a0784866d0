"""Each two-dimensional sample, rebuilt through the public interface and generated again.

Whatever differs from the sample is listed with the reason, sample by sample; what is listed and
doesn't differ is a failure too.
"""

from pathlib import Path

import pytest

from tests.toolkit.samples import input_files, needs_samples
from tests.toolkit.service.comparing import differences
from tests.toolkit.service.known_differences_2d import KNOWN, known_differences
from tests.toolkit.service.rebuilding_2d import rebuild
from tests.toolkit.sli import SliFile

SAMPLES = [path for path in input_files() if not SliFile.read(path).is_1d]

pytestmark = needs_samples


@pytest.mark.parametrize("path", SAMPLES, ids=lambda path: path.stem)
def test_sample_is_generated_section_by_section(path: Path) -> None:
    sample = SliFile.read(path)
    assert differences(sample, rebuild(sample)) == known_differences(path.stem)


def test_known_differences_are_those_of_the_samples() -> None:
    names = {path.stem for path in SAMPLES}
    assert {name for known in KNOWN for name in known.samples} == names
    rows = [
        (name, known.section, label)
        for known in KNOWN
        for name in known.samples
        for label in known.labels
    ]
    assert len(rows) == len(set(rows))
