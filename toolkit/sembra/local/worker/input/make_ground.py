"""The ground of a file: a cross-section, or a column of level layers."""

from collections.abc import Mapping
from dataclasses import replace

from sembra.local.sli.labelled import Labelled
from sembra.local.sli.sections import Section
from sembra.local.worker.ground.cross_section import CrossSection, LevelGround
from sembra.local.worker.ground.imaginary_surface import make_imaginary_surface
from sembra.local.worker.ground.material import Material
from sembra.local.worker.input.make_column import make_column
from sembra.local.worker.input.make_cross_section import make_cross_section
from sembra.local.worker.input.make_options import make_spreading


def make_ground(
    whole: Section, materials: Mapping[str, Material], water_unit_weight: float
) -> LevelGround | CrossSection:
    """Return the ground that a file describes.

    Raises:
        InputFileError: A section is malformed, or it refers to what doesn't exist.
    """
    if not Labelled(whole.section("MODEL")).switch("Dimension"):
        # Under level ground, an imaginary surface changes nothing.
        return LevelGround(make_column(whole, materials))
    return with_imaginary_surface(whole, make_cross_section(whole, materials), water_unit_weight)


def with_imaginary_surface(
    whole: Section, ground: CrossSection, water_unit_weight: float
) -> CrossSection:
    """Return the ground with the imaginary surface that the file asks for, if it does.

    That is the top of a layer, whose number counts from the lowest.

    Raises:
        InputFileError: There is no such layer, or a section is malformed.
    """
    options = Labelled(whole.section("CALCULATION OPTIONS"))
    if not options.switch("Imaginary surface", absent=False):
        return ground
    label = "Imaginary surface layer"
    number = options.code(label)
    if not 1 <= number <= len(ground.layers):
        raise options.error(label, f"there is no layer {number}")
    position = len(ground.layers) - number
    imaginary_surface = make_imaginary_surface(
        line=ground.layers[position].top,
        above=ground.layers[:position],
        phreatic_line=ground.phreatic_line,
        spreading=make_spreading(whole),
        water_unit_weight=water_unit_weight,
    )
    return replace(ground, imaginary_surface=imaginary_surface)
