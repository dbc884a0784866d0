"""What the stub file says about types beyond the declarations in the module.

The module declares types as its documentation tells them. A type checker serves users better with
types that say less of what is handed in (any sequence will do), and more of what comes back.
"""

import re

LOAD_COLUMNS = 50
"""How many load steps have a key of their own; a type checker knows no open-ended mapping."""

NEEDS_A_LIST = {"schedule"}
"""Parameters that tell a list from other sequences."""

RESULTS = {
    "OutputFileParser.vertical_results": "dict[int, VerticalResult]",
    "OutputFileParser.residual_times": "dict[int, ResidualSettlements]",
    "_NonUniformLoad.points": "Sequence[tuple[float, float]]",
}

PL_LINE_OR_CODE = ("_PlLine | int", "_PlLine | Literal[0, 99]")

ALIASES = {
    "Boundary": ("_Boundary", "A line between two layers, as `layer.boundary_top`."),
    "Curve": ("_Curve", "A straight part of a boundary or a pl-line."),
    "Layer": ("_Layer", "What `Model2D.create_layer` returns."),
    "Load": ("_Load", "A load of any kind."),
    "Material": ("_Material", "A value of `materials`."),
    "NonUniformLoad": ("_NonUniformLoad", "What `Model2D.create_non_uniform_load` returns."),
    "PlLine": ("_PlLine", "What `Model2D.create_pl_line` returns."),
    "Point": ("_Point", "What `Model2D.create_point` returns."),
    "PorePressure": (
        "_PlLine | Literal[0, 99]",
        "What the water does at a side of a layer: a pl-line, 0 for none, 99 for interpolation.",
    ),
    "UniformLoad": ("_UniformLoad", "A load on the whole surface."),
    "Vertical": ("_Vertical", "What `Model2D.create_vertical` returns."),
    "ResidualSettlements": (
        "dict[str, list[float]]",
        "Lists by header, such as `Time` and `Settlement`: the residual settlements of a vertical.",
    ),
}
"""Names for annotations; like all in this section, they are there for type checkers alone."""

RESULT_TYPES = '''
@type_check_only
class Coordinates(TypedDict, total=False):
    """Where a vertical stands [m], as far as the file has it."""

    x: float
    z: float

@type_check_only
class TimeSettlementPerLoad(TypedDict, total=False):
    """Settlement of the surface against time; without keys where the file has none."""

    load_step_count: int
    time_step_count: int
    time: list[float]
    """In days."""
{load_columns}

@type_check_only
class VerticalResult(TypedDict):
    """The results of one vertical."""

    coordinates: Coordinates
    depths: list[float]
    """Levels of the nodes [m]."""
    leakages: list[float]
    drained_layers: list[float]
    stresses: dict[str, list[float]]
    """Header to one number per node [kPa]."""
    time_settlement_per_load: TimeSettlementPerLoad
    vertical_data: dict[float, dict[str, list[float]]]
    """Time [days] to header to one number per node."""
'''


def of_parameter(name: str, declared: str) -> str:
    """Return the type of what may be handed in under a name."""
    if name not in NEEDS_A_LIST:
        declared = re.sub(r"\blist\[", "Sequence[", declared)
    return declared.replace(*PL_LINE_OR_CODE)


def of_result(path: str, declared: str) -> str:
    """Return the type of what an operation, named with its class, gives back."""
    return RESULTS.get(path, declared).replace(*PL_LINE_OR_CODE)


def section() -> str:
    """Return the part of the stub file that has no counterpart in the module."""
    columns = "\n".join(f"    load_{i}: list[float]" for i in range(1, LOAD_COLUMNS + 1))
    aliases = "".join(
        f'type {name} = {target}\n"""{documentation}"""\n\n'
        for name, (target, documentation) in ALIASES.items()
    )
    return f"# For type checkers alone.\n{RESULT_TYPES.format(load_columns=columns)}\n{aliases}"
