"""A small reader of D-Settlement input files, made for comparing them."""

import re
from collections.abc import Iterator
from pathlib import Path
from typing import Any

# Labels whose key isn't the label in another spelling.
IRREGULAR_KEYS = {"DistdPc": "dist_pc", "CorASecCp1": "cor_asec_cp1"}

# Parameters that `create_material` doesn't have.
UNKNOWN_PARAMETERS = {
    "SecondarySwellingReduced",
    "SecondarySwellingFactor",
    "UnloadingStressRatio",
}


class SliFile:
    """An input file, cut into its outermost sections."""

    def __init__(self, text: str) -> None:
        self.text = text
        head, _, data = text.partition("[INPUT DATA]\n")
        self.header = head.split("\n")
        self.sections: dict[str, list[str]] = {}
        lines = iter(data.split("\n"))
        for line in lines:
            mark = re.fullmatch(r"\[(.+)]", line)
            if mark and not mark[1].startswith("END OF"):
                self.sections[mark[1]] = list(_until(lines, f"[END OF {mark[1]}]"))

    @classmethod
    def read(cls, path: Path) -> "SliFile":
        """Read a file from the disk."""
        return cls(path.read_bytes().decode("ascii"))

    @property
    def is_1d(self) -> bool:
        """Whether it holds a one-dimensional model."""
        return "GEOMETRY 1D DATA" in self.sections

    def header_value(self, label: str) -> str:
        """Return what stands behind a label of the header."""
        return next(line.partition(": ")[2] for line in self.header if line.startswith(label))

    def option(self, section: str, label: str) -> str:
        """Return the value in front of a label, such as "0" of "0 : Model = NEN - Koppejan"."""
        for line in self.sections[section]:
            value, _, name = re.split(r"( : | = )", line, maxsplit=1) if " " in line else ("",) * 3
            if name == label or name.startswith(f"{label} = "):
                return value.strip()
        raise LookupError(f"no {label!r} in [{section}]")

    def number(self, section: str, label: str) -> float:
        """Return the value in front of a label as a number."""
        return float(self.option(section, label))

    @property
    def soils(self) -> list[list[str]]:
        """The lines of each material."""
        lines = iter(self.sections["SOIL COLLECTION"])
        return [list(_until(lines, "[END OF SOIL]")) for line in lines if line == "[SOIL]"]

    @property
    def other_loads(self) -> list[tuple[str, int, float, float, float]]:
        """Name, time, unit weight, height and level of application of each uniform load."""
        lines = self.sections["OTHER LOADS"][1:]
        loads = []
        for name, kind, values in zip(lines[::3], lines[1::3], lines[2::3], strict=True):
            assert kind == "3 : Uniform"
            time, *numbers = values.partition(" = ")[0].split()
            unit_weight, height, level = map(float, numbers)
            loads.append((name, int(time), unit_weight, height, level))
        return loads

    @property
    def residual_times(self) -> list[int]:
        """The calculation times."""
        return [int(line) for line in self.sections["RESIDUAL TIMES"][1:]]


def soil_parameters(lines: list[str]) -> tuple[str, dict[str, Any]]:
    """Return a material's name, and its parameters by the keywords of `create_material`."""
    name, *rest = lines
    parameters: dict[str, Any] = {}
    for line in rest:
        label, _, text = line.removeprefix("Soil").partition("=")
        if label not in UNKNOWN_PARAMETERS:
            key = IRREGULAR_KEYS.get(label) or _snake_case(label)
            parameters[key] = int(text) if re.fullmatch(r"-?\d+", text) else float(text)
    return name, parameters


def labels_of_differences(expected: list[str], generated: list[str]) -> set[str]:
    """Compare two sections line by line and return the labels of the lines that differ."""
    assert len(expected) == len(generated), (expected, generated)
    labels = set()
    for line, other in zip(expected, generated, strict=True):
        if line != other:
            label = label_of(line)
            labels.add(label if label == label_of(other) else f"{line!r} became {other!r}")
    return labels


def label_of(line: str) -> str:
    """Return what a line is about: the part of it that doesn't change with its value."""
    if line.startswith(("DATE", "TIME")):
        return line[:4]
    for separator in (" : ", " = "):
        if separator in line:
            return line.split(separator)[1].split(" = ")[0]
    return line.partition("=")[0].strip()


def _snake_case(label: str) -> str:
    boundary = r"(?<=[a-z0-9])(?=[A-Z])|(?<=[A-Z])(?=[A-Z][a-z])"
    return re.sub(boundary, "_", label).lower()


def _until(lines: Iterator[str], end: str) -> Iterator[str]:
    for line in lines:
        if line == end:
            return
        yield line
    raise ValueError(f"{end} is missing")
