"""Telling which materials a model has."""

from sembra.external.dsettlement import Model1D, Model2D

from examples.showcase.terminal import Terminal


def tell_materials(terminal: Terminal, model: Model1D | Model2D) -> None:
    """Write a line for each material of a model, with its unit weights."""
    for name, material in model.materials.items():
        terminal.line(
            f"{name:<15} {material.gam_dry:4.1f} / {material.gam_wet:4.1f} kN/m³ "
            "above / below the phreatic level"
        )
