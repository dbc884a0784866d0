"""Preconsolidation pressure of the elements of a column, in kPa."""

from __future__ import annotations

import numpy as np

from .discretisation import Mesh
from .model import Column, Floats, Material, PreconsolidationOption, PreconsolidationType


def preconsolidation_pressure(
    column: Column,
    mesh: Mesh,
    effective: Floats,
    at_middle: Floats,
    option: PreconsolidationOption,
) -> Floats:
    """The initial preconsolidation pressure of each element.

    A ratio (OCR) or a margin (POP) applies to the initial effective stress of the element. A
    pressure (Pc) holds for the whole layer, or at the middle of the layer with the pressure
    running parallel to the effective stress. The soil can't be in a state beyond its
    preconsolidation, so the initial effective stress is the least value.

    Args:
        column: the column.
        mesh: its mesh.
        effective: initial effective stress of each element.
        at_middle: initial effective stress in the middle of each layer of the column.
        option: whether Pc varies within a layer.
    """
    pressure = np.array(
        [
            _stated(column.layers[layer].material, stress, stress - at_middle[layer], option)
            for layer, stress in zip(mesh.element_layers, effective, strict=True)
        ]
    )
    corrected: Floats = np.maximum(pressure, effective)
    return corrected


def _stated(
    material: Material, stress: float, above_middle: float, option: PreconsolidationOption
) -> float:
    match material.preconsolidation_type:
        case PreconsolidationType.OCR:
            return material.ocr * stress
        case PreconsolidationType.POP:
            return material.pop + stress
        case PreconsolidationType.PC:
            return material.pc + (above_middle if option.varies_within_layer else 0.0)
