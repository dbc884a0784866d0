"""The degree of consolidation of the layers."""

import re
from typing import Final, TypedDict

_LAYER: Final = re.compile(
    r"\[Dissipation layer\](?:\r\n|\n|\r)\s*(?P<number>\d+)\s+=\s+Layer Number[ \t]*(?:\r\n|\n|\r)"
    r"(?P<rows>[^\[]*)\[End of Dissipation layer\]"
)


class LayerDissipation(TypedDict):
    """How far the excess pore pressure in a layer has gone.

    `time` is in days since a load comes; `degree` is the degree of consolidation, which is 1 when
    all of it has gone. By Darcy it passes 1 where drains draw the pressure below the initial one.
    """

    time: list[float]
    degree: list[float]


def read_dissipation(results: str) -> dict[int, LayerDissipation]:
    """Read the layers of a [Results] block, by their numbers, which count from the lowest.

    Raises:
        ValueError: A row has something else than two numbers.
    """
    layers: dict[int, LayerDissipation] = {}
    for match in _LAYER.finditer(results):
        layer: LayerDissipation = {"time": [], "degree": []}
        for row in match["rows"].splitlines():
            time, degree = map(float, row.split())
            layer["time"].append(time)
            layer["degree"].append(degree)
        layers[int(match["number"])] = layer
    return layers
