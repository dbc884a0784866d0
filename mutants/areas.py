"""What is tried: the code whose faults nobody would see by looking at a result, and its tests."""

from dataclasses import dataclass
from pathlib import Path

SOURCES = Path("external/dsettlement")


@dataclass(frozen=True)
class Area:
    """Some files and the tests that should notice a fault in them.

    `name` chooses the sample too: under another name other faults are tried. `what` says what the
    files do.
    """

    name: str
    what: str
    patterns: tuple[str, ...]
    tests: tuple[str, ...]

    def files(self, root: Path) -> list[Path]:
        """Return the files of the area, below `root`."""
        found = {path for pattern in self.patterns for path in (root / SOURCES).glob(pattern)}
        return sorted(path.relative_to(root) for path in found)


AREAS = (
    Area(
        "reader",
        "reads result files",
        ("output/**/*.cpp", "output/**/*.hpp"),
        (
            # The quick ones first: most faults end the run there.
            "tests/output/test_samples.py",
            "tests/output/test_vertical.py",
            "tests/output/test_residual_times.py",
            "tests/output/test_results_block.py",
            "tests/output/test_time_series.py",
            "tests/output/test_overrides.py",
            "tests/output/test_characters.py",
            "tests/output/test_leaks.py",
            "tests/output/test_agreement.py",
        ),
    ),
    Area(
        "registers",
        "enters points, curves and layers of a section, and finds them again",
        (
            "geometry/index/*.cpp",
            "geometry/index/*.hpp",
            "geometry/chains.cpp",
            "geometry/curve_list.cpp",
            "geometry/document_2d.cpp",
            "geometry/layer.cpp",
            "geometry/make.cpp",
            "geometry/model_2d.cpp",
            "geometry/state.cpp",
            "host/watched_field.cpp",
        ),
        ("tests/geometry",),
    ),
    Area(
        "validation",
        "refuses what a model must not hold",
        (
            "geometry/validation_2d.cpp",
            "geometry/geometry_1d.cpp",
            "geometry/layering.cpp",
            "geometry/verticals.cpp",
            "model/calculation_options.cpp",
            "model/calculation_times.cpp",
            "soil/load.cpp",
            "soil/load_table.cpp",
            "soil/material_table.cpp",
            "soil/non_uniform_load.cpp",
        ),
        ("tests/model", "tests/soil", "tests/geometry"),
    ),
    Area(
        "drains",
        "refuses vertical drains that can't be",
        ("soil/drain_*.cpp", "soil/vertical_drain.cpp"),
        ("tests/soil", "tests/model"),
    ),
)
