"""Rebuilding a sample of two dimensions through the public interface."""

from __future__ import annotations

from typing import TYPE_CHECKING

from sembra.external.dsettlement import (
    DrainageSimpleMode,
    DrainGrid,
    DrainType,
    Model2D,
    VerticalDrain,
)

from tests.toolkit.service.rebuilding import (
    create_materials,
    create_uniform_loads,
    generate,
    models,
    options,
)
from tests.toolkit.sli import SliFile
from tests.toolkit.sli_drain import drain_keys
from tests.toolkit.sli_geometry import Geometry, Polyline
from tests.toolkit.sli_loads import non_uniform_loads, verticals

if TYPE_CHECKING:
    from sembra.external.dsettlement import PorePressure


def rebuild(sample: SliFile) -> SliFile:
    """Build a sample's model anew and have its file filled in."""
    model = build(sample)
    return generate(model, sample)


def build(sample: SliFile) -> Model2D:
    """Build a sample's model anew."""
    geometry = Geometry.of(sample)
    bottom = geometry.polyline(geometry.boundaries[0])
    levels = {z for _x, z in verticals(sample)}
    assert len(levels) == 1
    section = "CALCULATION OPTIONS"
    model = Model2D(
        *models(sample),
        bottom,
        **options(sample),
        limits=(bottom[0][0], bottom[-1][0]),
        profile_time=int(sample.option(section, "Time superelevation")),
        stress_distribution_loads=sample.option(section, "Stress distribution loads") == "1",
        verticals_z_coordinate=levels.pop(),
        vertical_drain=drain(sample),
    )
    create_materials(model, sample)
    create_layers(model, geometry, ends_of_loads(sample))
    for x, _z in verticals(sample):
        model.create_vertical(x)
    for load in non_uniform_loads(sample):
        model.create_non_uniform_load(*load)
    create_uniform_loads(model, sample)
    return model


def create_layers(model: Model2D, geometry: Geometry, ends: Polyline) -> None:
    """Take over pl-lines and layers, with a point at each end of a load on the surface."""
    pl_lines = [
        model.create_pl_line(
            [model.create_point(x, y) for x, y in geometry.polyline(chain)],
            is_phreatic=number == geometry.phreatic_line,
        )
        for number, chain in enumerate(geometry.pl_lines, 1)
    ]
    pl_line_of: dict[int, PorePressure] = {0: 0, 99: 99, **dict(enumerate(pl_lines, 1))}
    surface = geometry.layers[-1].boundary_top
    for layer in geometry.layers:
        outline = geometry.polyline(geometry.boundaries[layer.boundary_top])
        if layer.boundary_top == surface and ends:
            outline = with_points(outline, ends)
        model.create_layer(
            [model.create_point(x, y) for x, y in outline],
            layer.material,
            pl_line_top=pl_line_of[layer.pl_top],
            pl_line_bottom=pl_line_of[layer.pl_bottom],
        )


def ends_of_loads(sample: SliFile) -> Polyline:
    """Return the points [m] where loads begin and end."""
    return [
        point for load in non_uniform_loads(sample) for point in (load.points[0], load.points[-1])
    ]


def with_points(outline: Polyline, points: Polyline) -> Polyline:
    """Return a line of one level with those of some points that lie on it, from left to right."""
    levels = {y for _x, y in outline}
    assert len(levels) == 1
    return sorted({*outline, *(point for point in points if point[1] in levels)})


def drain(sample: SliFile) -> VerticalDrain | None:
    """Take over the drains of a sample, unless they are switched off."""
    if sample.option("MODEL", "Vertical drains") == "0":
        return None
    keys = drain_keys(sample)
    schedules = [
        None,
        DrainageSimpleMode(
            keys["begin_time"],
            keys["end_time"],
            keys["underpressure"],
            keys["dewatering_head_or_pressure"],
        ),
        keys["detailed_schedule"],
    ]
    return VerticalDrain(
        DrainType(keys["type"]),
        keys["range_from"],
        keys["range_to"],
        keys["bottom_position"],
        keys["center_to_center"],
        keys["width_diameter"],
        thickness=keys["thickness"],
        position_drain=keys["position_drain"],
        grid=DrainGrid(keys["grid"]),
        start_of_drainage=keys["start_of_drainage"],
        phreatic_level_in_drain=keys["phreatic_level"],
        schedule=schedules[keys["schedule_type"]],
    )
