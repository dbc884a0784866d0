"""Input files of one-dimensional models, made for the tests of the worker."""

from base64 import b64decode, b64encode
from collections.abc import Mapping, Sequence
from typing import Any

from sembra.local.worker.job import run_job

Load = tuple[str, float, float, float, float]

SOIL: dict[str, float] = {
    "SoilGamDry": 15.0,
    "SoilGamWet": 18.0,
    "SoilPreconKoppejanType": 1,
    "SoilPc": 30.0,
    "SoilOCR": 1.0,
    "SoilPOP": 0.0,
    "SoilDrained": 1,
    "SoilApAsApproximationByCpCs": 0,
    "SoilCv": 1e-8,
    "SoilCp": 50.0,
    "SoilCp1": 12.5,
    "SoilCs": 300.0,
    "SoilCs1": 75.0,
    "SoilAp": 40.0,
    "SoilAsec": 250.0,
    "SoilPermeabilityHorFactor": 1.0,
    "SoilPermeabilityVer": 1e-4,
    "SoilStorageType": 1,
    "SoilPermeabilityStrainModulus": 1e15,
}

MODEL = {
    "Dimension = 1D": 0,
    "Calculation type = Terzaghi": 1,
    "Model = NEN - Koppejan": 0,
    "Strain type = Linear": 0,
    "Vertical drains = FALSE": 0,
    "Fit for settlement plate = FALSE": 0,
    "Probabilistic = FALSE": 0,
    "Horizontal displacements = FALSE": 0,
    "Secondary swelling = FALSE": 0,
}

OPTIONS = {
    "Precon. pressure within a layer = Constant (constant in the layers)": 0,
    "Imaginary surface = FALSE": 0,
    "Submerging = FALSE": 0,
    "Maintain profile = FALSE": 0,
    "Dispersion conditions layer boundaries top = drained": 1,
    "Dispersion conditions layer boundaries bottom = drained": 1,
    "Stress distribution soil = Buisman": 0,
    "Stress distribution loads = None": 0,
    "Dissipation = FALSE": 0,
    "X co-ordinate dissipation": 0.0,
    "Time superelevation": 0,
    "Gamma dry superelevation": 18.0,
    "Gamma wet superelevation": 20.0,
    "Iteration stop criteria desired profile [m]": 0.1,
    "Use fit factors = FALSE": 0,
}


def labelled(values: Mapping[str, float], changes: Mapping[str, float]) -> str:
    """Return `value : label` lines; a change names the label without its explanation."""
    changed = {label.partition(" = ")[0]: value for label, value in changes.items()}
    return "\n".join(
        f"{changed.get(label.partition(' = ')[0], value)} : {label}"
        for label, value in values.items()
    )


def input_text(
    *,
    layers: Sequence[tuple[float, str]] = ((0.0, "Clay"),),
    soils: Mapping[str, Mapping[str, float]] | None = None,
    phreatic_level: float = -10.0,
    bottom: float = -4.0,
    loads: Sequence[Load] = (("Fill", 0, 20.0, 1.5, 0.0),),
    times: Sequence[float] = (),
    end: float = 10000,
    reference_time: float = 1.0,
    water_unit_weight: float = 10.0,
    model: Mapping[str, float] | None = None,
    options: Mapping[str, float] | None = None,
) -> str:
    """Return the text of an input file; whatever isn't given is one layer under one load."""
    collection: Mapping[str, Mapping[str, float]] = {"Clay": {}} if soils is None else soils
    soil_blocks = "".join(
        f"[SOIL]\n{name}\n"
        + "".join(f"{key}={value}\n" for key, value in (SOIL | dict(changes)).items())
        + "[END OF SOIL]\n"
        for name, changes in collection.items()
    )
    layer_lines = "".join(f"{top:13.3f}\n{name}\n" for top, name in layers)
    load_lines = "".join(
        f"{name}\n3 : Uniform\n{time} {weight} {height} {level} = Time, Gamma, H, Yapplication\n"
        for name, time, weight, height, level in loads
    )
    time_lines = "".join(f"{time}\n" for time in times)
    return f"""INPUT FILE FOR D-SETTLEMENT
==============================================================================
COMPANY    : Soil and Sons
DATE       : 10/08/2023
TIME       : 07:52:54
FILENAME   : C:\\projects\\dike.sli
CREATED BY : somebody
==========================    BEGINNING OF DATA     ==========================
[INPUT DATA]
[MODEL]
{labelled(MODEL, model or {})}
[END OF MODEL]
[SOIL COLLECTION]
{len(collection):5d} = number of items
{soil_blocks}[END OF SOIL COLLECTION]
[GEOMETRY 1D DATA]
{len(layers)}
{layer_lines}5
{phreatic_level:13.3f}
{bottom:13.3f}
        0.000
        0.000
1
1
 0.00000000000000E+0000
 0.00000000000000E+0000
 1.00000000000000E+0000
[END OF GEOMETRY 1D DATA]
[VERTICALS]
    1 = number of items
       0.000        0.000 = X, Z
[END OF VERTICALS]
[WATER]
{water_unit_weight:12.2f} = Unit Weight of Water
[END OF WATER]
[NON-UNIFORM LOADS]
    0 = number of items
[END OF NON-UNIFORM LOADS]
[WATER LOADS]
    0 = number of items
[END OF WATER LOADS]
[OTHER LOADS]
{len(loads):5d} = number of items
{load_lines}[END OF OTHER LOADS]
[CALCULATION OPTIONS]
{labelled(OPTIONS, options or {})}
    1.00 = Load column width imaginary surface [m]
    0.50 = Load column width non-uniform loads [m]
    0.50 = Load column width trapeziform loads [m]
{end} = End of consolidation [days]
{reference_time:.9E} = Reference time
[END OF CALCULATION OPTIONS]
[RESIDUAL TIMES]
{len(times)} : Number of items
{time_lines}[END OF RESIDUAL TIMES]
[END OF INPUT DATA]
[END OF INPUT FILE]
"""


def job(text: str | bytes) -> dict[str, Any]:
    """Return the content of a job for an input file."""
    data = text.encode() if isinstance(text, str) else text
    return {"name": "dsettlement", "version": 1, "body": b64encode(data).decode()}


def calculated(text: str | bytes) -> str:
    """Run a job that should succeed and return the text of its result file."""
    result = run_job(job(text))
    assert result["error"] is None
    return b64decode(result["files"][".sld"]).decode()


def refused(text: str | bytes) -> str:
    """Run a job that should fail and return its message."""
    result = run_job(job(text))
    assert ".sld" not in result["files"]
    message: str = result["error"]
    assert b64decode(result["files"][".err"]).decode() == f"{message}\n"
    return message
