"""Each one-dimensional sample, rebuilt through the public interface and generated again.

Sections that may differ are listed with the reason. What is listed is held against the samples
too: a line that is listed and yet never differs has no place here.
"""

from pathlib import Path

import pytest
from sembra.external.dsettlement import Model1D

from tests.toolkit.samples import input_files, needs_samples
from tests.toolkit.service.rebuilding import (
    create_materials,
    create_uniform_loads,
    generate,
    models,
    options,
)
from tests.toolkit.sli import SliFile, labels_of_differences

SAMPLES = [path for path in input_files() if SliFile.read(path).is_1d]

DATE_AND_TIME = "the metadata give today's date and time or a dummy, never another day's"
NOT_IN_DOCUMENT = "the document of a model has no key for it"
SWITCHED_OFF = "the drains are off: the model then sends its own default drain"

EXPECTED = {
    "header": {"DATE": DATE_AND_TIME, "TIME": DATE_AND_TIME},
    "SOIL COLLECTION": {
        "SoilSecondarySwellingFactor": NOT_IN_DOCUMENT,
        "SoilUnloadingStressRatio": NOT_IN_DOCUMENT,
    },
    "WATER": {"Unit Weight of Water": NOT_IN_DOCUMENT},
    "CALCULATION OPTIONS": {
        "Precon. pressure within a layer": NOT_IN_DOCUMENT,
        "Dispersion conditions layer boundaries top": NOT_IN_DOCUMENT,
        "Number of subtime steps": NOT_IN_DOCUMENT,
        "Reference time": NOT_IN_DOCUMENT,
        "Predict settlements omitting additional loadsteps": NOT_IN_DOCUMENT,
    },
    "VERTICAL DRAIN": {
        "Flow type": SWITCHED_OFF,
        "Position of the leftmost drain": SWITCHED_OFF,
        "Position of the rightmost drain": SWITCHED_OFF,
        "Center to center distance": SWITCHED_OFF,
        "Diameter": SWITCHED_OFF,
        "Grid": SWITCHED_OFF,
        "Under pressure for strips and columns": SWITCHED_OFF,
        "Phreatic level in drain": SWITCHED_OFF,
    },
    "PROBABILISTIC DEFAULTS": {
        f"ProbDef{stem}Cor": NOT_IN_DOCUMENT
        for stem in ("Cp", "Cs", "Cs1", "Ap", "ASec", "RRCr", "Ca", "PriCompIndex", "SecCompRate")
    },
}


def rebuild(sample: SliFile) -> SliFile:
    """Generate a sample's model anew."""
    assert sample.option("MODEL", "Vertical drains") == "0"
    model = Model1D(*models(sample), **options(sample))
    create_materials(model, sample)
    update_geometry(model, sample.sections["GEOMETRY 1D DATA"])
    create_uniform_loads(model, sample)
    return generate(model, sample)


def update_geometry(model: Model1D, lines: list[str]) -> None:
    """Take over the column of layers."""
    count = int(lines[0])
    layers = [(float(lines[1 + 2 * i]), lines[2 + 2 * i]) for i in range(count)]
    phreatic_level, bottom_level = map(float, lines[2 + 2 * count : 4 + 2 * count])
    model.update_geometry(bottom_level, layers, phreatic_level=phreatic_level)


def differences(sample: SliFile) -> dict[str, set[str]]:
    """Generate a sample anew; return the labels of the lines that differ, by section."""
    generated = rebuild(sample)
    assert list(generated.sections) == list(sample.sections)
    pairs = {"header": (sample.header, generated.header)} | {
        name: (sample.sections[name], generated.sections[name]) for name in sample.sections
    }
    return {name: labels_of_differences(*pair) for name, pair in pairs.items()}


@needs_samples
def test_there_are_one_dimensional_samples() -> None:
    assert len(SAMPLES) >= 5


@needs_samples
@pytest.mark.parametrize("path", SAMPLES, ids=lambda path: path.stem)
def test_sample_is_generated_section_by_section(path: Path) -> None:
    for name, labels in differences(SliFile.read(path)).items():
        assert labels <= set(EXPECTED.get(name, {})), name


@needs_samples
def test_every_listed_difference_is_there() -> None:
    seen: dict[str, set[str]] = {}
    for path in SAMPLES:
        for name, labels in differences(SliFile.read(path)).items():
            if labels:
                seen.setdefault(name, set()).update(labels)
    assert seen == {name: set(labels) for name, labels in EXPECTED.items()}
