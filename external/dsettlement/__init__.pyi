# Made by scripts/make-stubs from the module itself; change the module and run it again.
"""D-Settlement calculations: models in memory, input files, analyses and their results.

Build a Model1D or a Model2D, call its generate_input_file, hand the file to a
DSettlementAnalysis, execute it, and read the result file with an OutputFileParser.

Units throughout: metres for levels and coordinates, days for times, kN/m³ for unit weights,
kPa for pressures. Nothing is converted.
"""

import re
from abc import ABCMeta, abstractmethod
from collections import OrderedDict
from collections.abc import Sequence
from enum import Enum
from io import BytesIO, StringIO
from typing import Any, ClassVar, Literal, TypedDict, overload, type_check_only

from sembra.core import Color, File
from sembra.external.external_program import ExternalProgram, _JobContent

__version__: str
__all__ = [
    "CalculationModel",
    "ConsolidationModel",
    "DSettlementAnalysis",
    "DrainGrid",
    "DrainType",
    "DrainageSimpleMode",
    "Metadata",
    "Model1D",
    "Model2D",
    "OutputFileParser",
    "VerticalDrain",
]

class CalculationModel(Enum):
    """The relation between stress, time and strain with which settlements are calculated.

    NEN_KOPPEJAN: Koppejan's model; strain is linear or natural, as `natural_strain` says.
    NEN_BJERRUM: Bjerrum's model; strain is always linear.
    ISOTACHE: the a,b,c isotache model; strain is always natural.
    """

    NEN_KOPPEJAN = 0
    NEN_BJERRUM = 1
    ISOTACHE = 2

class ConsolidationModel(Enum):
    """The way in which the dissipation of excess pore pressure is calculated.

    DARCY: flow between the layers by Darcy's law.
    TERZAGHI: Terzaghi's degree of consolidation, layer by layer.
    """

    DARCY = 0
    TERZAGHI = 1

class _Vertical:
    """A position along the x axis of the geometry for which D-Settlement reports results.

    Each object is equal only to itself.
    """
    def __init__(self, x: float) -> None:
        """Keep the position.

        x: x coordinate [m]; kept as given.
        """
    @property
    def x(self) -> float:
        """x coordinate [m]."""
    def _serialize(self) -> dict[str, Any]:
        """Return a new mapping with the one key 'x'."""
    def __setattr__(self, name: str, value: Any) -> None:
        """Implement setattr(self, name, value)."""
    def __delattr__(self, name: str) -> None:
        """Implement delattr(self, name)."""

class _Material:
    """A record of soil parameters, which layers refer to by its name.

    gam_dry: unit weight above the phreatic level [kN/m³].
    gam_wet: unit weight below the phreatic level [kN/m³].
    """

    gam_dry: float
    gam_wet: float
    def __init__(
        self, gam_dry: float, gam_wet: float, color: Color | None = None, **kwargs: Any
    ) -> None:
        """Keep the parameters; nothing is checked.

        gam_dry: unit weight above the phreatic level [kN/m³].
        gam_wet: unit weight below the phreatic level [kN/m³].
        color: colour for visualisation; a random one if it is not given.
        kwargs: all other soil parameters, by their keys in the document.
        """
    @property
    def color(self) -> Color:
        """Colour for visualisation in D-Settlement."""
    def _serialize(self, name: str) -> dict[str, Any]:
        """Return the material's part of the document as a new mapping.

        name: the name of the material, which the record does not know.
        """

class _Load(metaclass=ABCMeta):
    """A weight placed on the model at a given time."""
    @abstractmethod
    def _serialize(self, name: str) -> dict[str, Any]:
        """Return the load's part of the document as a new mapping.

        name: the name of the load.
        """

class _OtherLoad(_Load):
    """A load that is described by numbers alone, without points."""
    @abstractmethod
    def _serialize(self, name: str) -> dict[str, Any]:
        """Return the load's part of the document as a new mapping.

        name: the name of the load.
        """

class _UniformLoad(_OtherLoad):
    """A load of the same weight everywhere.

    time: the moment of application [days]; -1 marks an initial load.
    unit_weight: [kN/m³].
    height: [m].
    y_application: level of application [m].
    """

    time: int
    unit_weight: float
    height: float
    y_application: float
    def __init__(self, time: int, unit_weight: float, height: float, y_application: float) -> None:
        """Keep the four values; nothing is checked.

        time: [days]; -1 marks an initial load.
        unit_weight: [kN/m³].
        height: [m].
        y_application: [m].
        """
    def _serialize(self, name: str) -> dict[str, Any]:
        """Return the load's part of the document as a new mapping.

        name: the name of the load, which the load does not know.
        """

class _NonUniformLoad(_Load):
    """A load by the weight of the soil between a polyline and what lies below it.

    An initial load affects the initial stresses only and causes neither creep nor consolidation.
    """
    def __init__(
        self,
        name: str,
        points: Sequence[tuple[float, float]],
        time: int = 0,
        end_time: int = 0,
        gamma_dry: float = 10.0,
        gamma_wet: float = 10.0,
        temporary: bool = False,
    ) -> None:
        """Check the times and the order of the points, and keep the values.

        name: name of the load.
        points: x-y coordinates of the load, from left to right [m]; the list is kept, not copied.
        time: the moment the load is laid down [days]; -1 makes it an initial load.
        end_time: the moment the load is removed [days], only for temporary loads.
        gamma_dry: total unit weight above phreatic level [kN/m³].
        gamma_wet: total unit weight below phreatic level [kN/m³].
        temporary: whether the load is a temporary load.

        Raises ModelError if time is greater than end_time, temporary or not, or if an x coordinate
        is less than the one before it.
        """
    @property
    def points(self) -> Sequence[tuple[float, float]]:
        """x-y coordinates of the load, as the list given."""
    def _serialize(self, name: str) -> dict[str, Any]:
        """Return the load's part of the document as a new mapping.

        name: not used; the load knows its name.
        """

class DrainType(Enum):
    """The kind of vertical drain.

    STRIP: prefabricated strips.
    COLUMN: round columns.
    SAND_WALL: walls of sand.

    A member is equal only to itself.
    """

    STRIP = 0
    COLUMN = 1
    SAND_WALL = 2

class DrainGrid(Enum):
    """The grid in which strips or columns are placed.

    TRIANGULAR: at the corners of triangles.
    RECTANGULAR: at the corners of squares.
    UNDETERMINED: in a grid of which only the distance is known.

    A member is equal only to itself.
    """

    TRIANGULAR = 0
    RECTANGULAR = 1
    UNDETERMINED = 2

class DrainageSimpleMode:
    """Simple drainage schema; to be used in VerticalDrain"""

    begin_time: float
    end_time: float
    underpressure: float
    dewatering_head_or_pressure: float
    def __init__(
        self,
        begin_time: float,
        end_time: float,
        underpressure: float,
        dewatering_head_or_pressure: float,
    ) -> None:
        """begin_time: start of the dewatering [days].
        end_time: end of the dewatering [days].
        underpressure: [kPa].
        dewatering_head_or_pressure: water head [m], or tube pressure [kPa] if the drain is a
            sand wall.
        """

class VerticalDrain:
    """The vertical drains of a model: what they are, where they are, and the schedule of their dewatering.

    Doesn't change after construction.
    """

    range_from: float
    range_to: float
    bottom_position: float
    center_to_center: float
    width_diameter: float
    def __init__(
        self,
        drain_type: DrainType,
        range_from: float,
        range_to: float,
        bottom_position: float,
        center_to_center: float,
        width_diameter: float,
        thickness: float | None = None,
        position_drain: float | None = None,
        grid: DrainGrid | None = None,
        start_of_drainage: float | None = None,
        phreatic_level_in_drain: float | None = None,
        schedule: DrainageSimpleMode | list[tuple[float, float, float]] | None = None,
    ) -> None:
        """drain_type: kind of drain.
        range_from, range_to: range along x over which drainage takes place [m].
        bottom_position: level of the bottom of the drains [m].
        center_to_center: distance between the centres of drains [m], from 0.001 to 1000.
        width_diameter: width of the drains, or diameter for COLUMN [m], from 0.001 to 1000.
        thickness: thickness of a strip [m], from 0.001 to 1000; must be set for STRIP.
        position_drain: level of the drain pipe [m]; must be set for SAND_WALL with a schedule.
        grid: grid of the drains; must be set for STRIP and COLUMN.
        start_of_drainage: [days], from 0 to 100000; must be set unless the schedule is a list.
        phreatic_level_in_drain: [m]; must be set unless the schedule is a list.
        schedule: None; a DrainageSimpleMode; or a list of triples of time [days], underpressure
            [kPa] and water head [m] (tube pressure [kPa] for SAND_WALL).

        Raises ModelError for the first value that is missing or out of its range.
        """
    @property
    def position_drain(self) -> float | None:
        """Level of the drain pipe [m], or None."""
    def _serialize(self) -> dict[str, Any]:
        """Return the drain's part of the document, always with the same keys, as a new mapping."""

class Metadata:
    """The identification block of an input file.

    Doesn't change after construction and serves any number of generations.
    """
    def __init__(
        self,
        file_name: str = "-",
        company: str = "-",
        created_by: str = "-",
        title_1: str = "-",
        title_2: str = "-",
        title_3: str = "-",
        write_date: bool = False,
        write_time: bool = False,
    ) -> None:
        """file_name: name of the input file as the file itself tells it.
        company: company that the calculation is made for.
        created_by: who or what made the file.
        title_1, title_2, title_3: titles of the calculation, at most 50 characters each.
        write_date: whether the date of generation is written; else 01/01/1900.
        write_time: whether the time of generation is written; else 00:00:00.

        Raises ModelError for the first title that is too long.
        """
    def _serialize(self) -> dict[str, str]:
        """Return the identification block as a new mapping of str to str.

        Date and time are those of this call.
        """

class _Model(metaclass=ABCMeta):
    """What one-dimensional and two-dimensional models have in common: calculation options,
    materials, loads, verticals, calculation times and the generation of the input file.

    Units: metres for levels and coordinates, days for times, kN/m³ for unit weights, kPa for
    pressures. Values are kept as given; nothing is converted.
    """

    _calculation_model: CalculationModel
    _consolidation_model: ConsolidationModel
    _natural_strain: bool
    _reliability_analysis: bool
    _fit_for_settlement_plate: bool
    _horizontal_displacements: bool
    _limits: tuple[float, float]
    _water_unit_weight: float
    _verticals_discretization: int
    _verticals_z_coordinate: float
    _maintain_profile: bool
    _profile_time: int
    _profile_unit_weight_above_phreatic_level: float
    _profile_unit_weight_below_phreatic_level: float
    _end_of_settlement_calculation: int
    _stress_distribution_loads: bool
    _has_vertical_drains: bool
    _vertical_drain: VerticalDrain
    _materials: dict[str, _Material]
    _verticals: list[_Vertical]
    _non_uniform_loads: OrderedDict[str, _NonUniformLoad]
    _other_loads: dict[str, _OtherLoad]
    _calculation_times: list[int]
    _SOIL_VERSION: ClassVar[int]
    _GEOMETRY_VERSION: ClassVar[int]
    _DSETTLEMENT_VERSION: ClassVar[int]
    _DEFAULT_MATERIALS: ClassVar[dict[str, tuple[float, float, Color]]]
    _DEFAULT_VERTICAL_DRAIN: ClassVar[VerticalDrain]
    @abstractmethod
    def __init__(
        self,
        calculation_model: CalculationModel,
        consolidation_model: ConsolidationModel,
        create_default_materials: bool = True,
        *,
        natural_strain: bool = False,
        reliability_analysis: bool = False,
        fit_for_settlement_plate: bool = False,
        horizontal_displacements: bool = False,
        limits: tuple[float, float] = (0.0, 100.0),
        water_unit_weight: float = 9.81,
        verticals_discretization: int = 100,
        verticals_z_coordinate: float = 0.0,
        maintain_profile: bool = False,
        profile_time: int = 0,
        profile_unit_weight_above_phreatic_level: float = 10.0,
        profile_unit_weight_below_phreatic_level: float = 10.0,
        end_of_settlement_calculation: int = 10000,
        stress_distribution_loads: bool = False,
        vertical_drain: VerticalDrain | None = None,
    ) -> None:
        """Check and keep the calculation options, and enter the default materials.

        calculation_model: the calculation model.
        consolidation_model: the consolidation model; not checked here.
        create_default_materials: whether to start with the default materials or with none.
        natural_strain: natural strain if true, linear strain if false; only NEN_KOPPEJAN listens.
        reliability_analysis, fit_for_settlement_plate, horizontal_displacements: kept, and part of
            no document.
        limits: left and right limit of the model [m].
        water_unit_weight: [kN/m³]; kept, and part of no document.
        verticals_discretization: number of elements along a vertical, from 5 to 500.
        verticals_z_coordinate: z coordinate of the verticals [m].
        maintain_profile: whether the profile is maintained by superelevation.
        profile_time: time of the superelevation [days], from 0 to 100000 and not above
            end_of_settlement_calculation.
        profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
            unit weight of the superelevation [kN/m³].
        end_of_settlement_calculation: [days].
        stress_distribution_loads: True for "Simulate", False for "None".
        vertical_drain: the vertical drains, or None for a model without.

        Raises ModelError if an option is out of its range, KeyError if calculation_model is not a
        member of CalculationModel.
        """
    @property
    def materials(self) -> dict[str, _Material]:
        """The materials by name, as a new mapping of str to _Material."""
    @property
    def verticals(self) -> list[_Vertical]:
        """The verticals, as a new list."""
    def create_material(
        self,
        name: str,
        gam_dry: float,
        gam_wet: float,
        color: Color | None = None,
        *,
        initial_void_ratio: float = 0.0,
        cohesion: float = 0.0,
        phi: float = 0.0,
        precon_isotache_type: int = 0,
        precon_koppejan_type: int = 0,
        use_equivalent_age: int = 0,
        equivalent_age: float = 0.0,
        pc: float = 0.0,
        ocr: float = 1.0,
        pop: float = 0.0,
        limit_stress: float = 1.0,
        drained: int = 0,
        ap_as_approximation_by_cp_cs: int = 0,
        cv: float = 10.0,
        permeability_ver: float = 0.05,
        permeability_hor_factor: float = 1.0,
        storage_type: int = 0,
        permeability_strain_modulus: float = 1000000000000000.0,
        use_prob_defaults: int = 1,
        std_gam_dry: float = 0.0,
        std_gam_wet: float = 0.0,
        std_cv: float = 0.0,
        std_pc: float = 0.0,
        std_pri_comp_index: float = 0.0,
        std_sec_comp_index: float = 0.0,
        std_sec_comp_rate: float = 0.0,
        std_ocr: float = 0.0,
        std_permeability_ver: float = 0.0,
        std_pop: float = 0.0,
        std_permeability_hor_factor: float = 0.0,
        std_initial_void_ratio: float = 0.0,
        std_permeability_strain_modulus: float = 0.0,
        std_limit_stress: float = 0.0,
        std_cp: float = 0.0,
        std_cp1: float = 0.0,
        std_cs: float = 0.0,
        std_cs1: float = 0.0,
        std_ap: float = 0.0,
        std_asec: float = 0.0,
        std_car: float = 0.0,
        std_ca: float = 0.0,
        std_r_ratio: float = 0.0,
        std_c_ratio: float = 0.0,
        std_s_ratio: float = 0.0,
        std_cr_index: float = 0.0,
        std_cc_index: float = 0.0,
        std_csw_index: float = 0.0,
        dist_gam_dry: int = 2,
        dist_gam_wet: int = 2,
        dist_cv: int = 2,
        dist_pc: int = 2,
        dist_pri_comp_index: int = 2,
        dist_sec_comp_index: int = 2,
        dist_sec_comp_rate: int = 2,
        dist_ocr: int = 2,
        dist_permeability_ver: int = 2,
        dist_pop: int = 2,
        dist_permeability_hor_factor: int = 2,
        dist_initial_void_ratio: int = 2,
        dist_permeability_strain_modulus: int = 2,
        dist_limit_stress: int = 2,
        dist_cp: int = 2,
        dist_cp1: int = 2,
        dist_cs: int = 2,
        dist_cs1: int = 2,
        dist_ap: int = 2,
        dist_asec: int = 2,
        dist_car: int = 2,
        dist_ca: int = 2,
        dist_r_ratio: int = 2,
        dist_c_ratio: int = 2,
        dist_s_ratio: int = 2,
        dist_cr_index: int = 2,
        dist_cc_index: int = 2,
        dist_csw_index: int = 2,
        cor_cp_cp1: float = 0.0,
        cor_cs_cp1: float = 0.0,
        cor_cs1_cp1: float = 0.0,
        cor_ap_cp1: float = 0.0,
        cor_asec_cp1: float = 0.0,
        cor_cr_index_cc_index: float = 0.0,
        cor_r_ratio_c_ratio: float = 0.0,
        cor_ca_cc_index_or_c_ratio: float = 0.0,
        cor_pri_comp_index_sec_comp_index: float = 0.0,
        cor_sec_comp_rate_sec_comp_index: float = 0.0,
        cp: float = 1.0,
        cp1: float = 1.0,
        cs: float = 1.0,
        cs1: float = 1.0,
        ap: float = 1.0,
        asec: float = 1.0,
        car: float = 0.0,
        ca: float = 1.0,
        comp_ratio: int = 1,
        r_ratio: float = 1.0,
        c_ratio: float = 1.0,
        s_ratio: float = 0.0,
        cr_index: float = 1.0,
        cc_index: float = 1.0,
        csw_index: float = 0.0,
        pri_comp_index: float = 0.01,
        sec_comp_index: float = 0.1,
        sec_comp_rate: float = 0.005,
        horizontal_behaviour_type: int = 2,
        elasticity: float = 1000.0,
        default_elasticity: int = 1,
    ) -> None:
        """Create a material, for layers to refer to by its name.

        name: name of the material, at most 25 characters; must be new in this model.
        gam_dry: unit weight above the phreatic level [kN/m³].
        gam_wet: unit weight below the phreatic level [kN/m³].
        color: colour for visualisation in D-Settlement; a random one if it is not given.

        All further soil parameters go by keyword, and to the input file as they are; the integers
        among them are D-Settlement's own codes and switches.

        initial_void_ratio: initial void ratio [-].
        cohesion: cohesion [kPa].
        phi: angle of internal friction [deg].
        precon_isotache_type, precon_koppejan_type: what gives the preconsolidation pressure: 0 for ocr,
            1 for pc, 2 for pop. The first counts for NEN_BJERRUM and ISOTACHE, the second for
            NEN_KOPPEJAN.
        use_equivalent_age: 1 if the equivalent age counts, 0 if not.
        equivalent_age: equivalent age [days].
        pc: preconsolidation pressure [kPa].
        ocr: overconsolidation ratio [-].
        pop: pre-overburden pressure [kPa].
        limit_stress: limit stress [kPa].
        drained: 1 if the layer drains, without consolidation; 0 if it consolidates.
        ap_as_approximation_by_cp_cs: 1 if ap and asec follow from cp and cs, 0 if not.
        cv: vertical consolidation coefficient [m²/s].
        permeability_ver: vertical permeability [m/day].
        permeability_hor_factor: ratio of horizontal to vertical permeability [-].
        permeability_strain_modulus: permeability strain modulus [-].
        storage_type: what DARCY takes of these: 0 for cv, 1 for permeability_ver, 2 for permeability_ver
            that falls with strain by permeability_strain_modulus.
        use_prob_defaults: 1 if the defaults hold for what follows of a parameter's spread, 0 if not.
        std_...: standard deviation of the parameter of that name, in its unit.
        dist_...: its distribution, for a reliability analysis, as a code of D-Settlement.
        cor_...: correlation of two parameters [-].
        cp, cp1: primary compression below and above the preconsolidation pressure [-].
        cs, cs1: secular compression below and above it [-].
        ap, asec: primary and secular swelling [-].
        car, ca: secondary compression when reloading and at first loading [-].
        comp_ratio: what NEN_BJERRUM takes: 1 for the ratios, 0 for the indices, with initial_void_ratio.
        r_ratio, c_ratio, s_ratio: reloading, compression and swelling ratio [-].
        cr_index, cc_index, csw_index: the same as indices [-].
        pri_comp_index, sec_comp_index, sec_comp_rate: isotache parameters a, b and c [-].
        horizontal_behaviour_type: how soil behaves horizontally, as a code of D-Settlement.
        elasticity: elasticity, for the horizontal behaviour [kPa].
        default_elasticity: 1 if the default elasticity counts, 0 if not.

        Raises ModelError if the name exists already or is too long; the model then stays as it was.
        """
    def create_uniform_load(
        self, name: str, time: int, unit_weight: float, height: float, y_application: float
    ) -> None:
        """Create a load of the same weight everywhere.

        name: name of the load, of any length; must be new among the uniform loads of this model.
        time: the moment of application [days]; -1 marks an initial load.
        unit_weight: [kN/m³].
        height: [m].
        y_application: level of application [m].

        Raises ModelError if the name exists already; the earlier load then stays.
        """
    def set_calculation_times(self, *time: int) -> None:
        """Set the times at which results are obtained, in place of those set before.

        time: any number of different times [days], each from 0 to the end of the settlement
            calculation; their order is kept.

        Raises ModelError if two times are equal or one is out of range; the times set before then
        stay.
        """
    def _generate_input(
        self, metadata: Metadata | None = None, dissipation_calculation: _Vertical | None = None
    ) -> dict[str, Any]:
        """Return the complete document of the model, as a new mapping.

        metadata: identification block; one with all defaults if it is not given.
        dissipation_calculation: vertical at which dissipation is calculated, or None.

        Raises ModelError if the model is not fit to be calculated.
        """
    @overload
    def generate_input_file(
        self,
        metadata: Metadata | None = None,
        *,
        dissipation_calculation: _Vertical | None = None,
        as_file: Literal[False] = False,
    ) -> BytesIO:
        """Check the model and return its D-Settlement input file (.sli).

        metadata: identification block of the file; one with all defaults if it is not given.
        dissipation_calculation: vertical of the model at which a dissipation calculation is added,
            or None for no such calculation.
        as_file: whether to return a File instead of a BytesIO.

        Returns the content of the file in UTF-8, as a BytesIO at its start, or as a File. The model
        stays as it is, and the same model gives the same file, unless the metadata asks for date or
        time.

        Raises ModelError if the model is not fit to be calculated; no request is made then. Raises
        Exception, with the InternalError as its cause, if the template-filling service fails.
        """
    @overload
    def generate_input_file(
        self,
        metadata: Metadata | None = None,
        *,
        dissipation_calculation: _Vertical | None = None,
        as_file: Literal[True],
    ) -> File:
        """Check the model and return its D-Settlement input file (.sli).

        metadata: identification block of the file; one with all defaults if it is not given.
        dissipation_calculation: vertical of the model at which a dissipation calculation is added,
            or None for no such calculation.
        as_file: whether to return a File instead of a BytesIO.

        Returns the content of the file in UTF-8, as a BytesIO at its start, or as a File. The model
        stays as it is, and the same model gives the same file, unless the metadata asks for date or
        time.

        Raises ModelError if the model is not fit to be calculated; no request is made then. Raises
        Exception, with the InternalError as its cause, if the template-filling service fails.
        """
    @overload
    def generate_input_file(
        self,
        metadata: Metadata | None = None,
        *,
        dissipation_calculation: _Vertical | None = None,
        as_file: bool = False,
    ) -> BytesIO | File:
        """Check the model and return its D-Settlement input file (.sli).

        metadata: identification block of the file; one with all defaults if it is not given.
        dissipation_calculation: vertical of the model at which a dissipation calculation is added,
            or None for no such calculation.
        as_file: whether to return a File instead of a BytesIO.

        Returns the content of the file in UTF-8, as a BytesIO at its start, or as a File. The model
        stays as it is, and the same model gives the same file, unless the metadata asks for date or
        time.

        Raises ModelError if the model is not fit to be calculated; no request is made then. Raises
        Exception, with the InternalError as its cause, if the template-filling service fails.
        """
    def _validate(self) -> None:
        """Check the finished model; runs before each generation of an input file.

        Here only vertical drains are held against the limits and the levels of the model; a model
        without drains passes.

        Raises ModelError for the first check that fails; the model stays as it is.
        """
    def _add_other_load(self, name: str, load: _OtherLoad) -> None:
        """Enter a load into the table of other loads.

        name: name of the load; must be new in the table.
        load: the load.

        Raises ModelError if the name exists already.
        """
    @abstractmethod
    def _serialize(self) -> dict[str, Any]:
        """Return the part of the model document that all models share, as a new mapping.

        A concrete model adds its geometry behind these keys. The model stays as it is.
        """
    def _serialize_materials(self) -> list[dict[str, Any]]:
        """Return a new list with the document of each material, sorted by name."""
    def _serialize_verticals(self) -> list[dict[str, Any]]:
        """Return a new list with the document of each vertical."""
    def _serialize_non_uniform_loads(self) -> list[dict[str, Any]]:
        """Return a new list with the document of each non-uniform load, in the order of creation."""
    def _serialize_other_loads(self) -> list[dict[str, Any]]:
        """Return a new list with the document of each other load, in the order of creation."""
    @property
    @abstractmethod
    def _min_vertical_drains(self) -> float:
        """Lowest level for vertical drains [m]."""
    @property
    @abstractmethod
    def _max_vertical_drains(self) -> float:
        """Highest level for vertical drains [m]."""

class _Geometry1D:
    """A column of horizontal layers above a bottom level.

    A layer reaches down to the top of the next one, the last to the bottom level.

    phreatic_level: [m], or None.
    """

    phreatic_level: float | None
    def __init__(
        self,
        bottom_level: float,
        layers: Sequence[tuple[float, str]],
        phreatic_level: float | None = None,
    ) -> None:
        """Check the order of the levels and keep the values, the list of layers included.

        bottom_level: bottom level of the bottom-most layer [m].
        layers: pairs of top level [m] and material name, from top to bottom.
        phreatic_level: [m], or None; compared with nothing.

        Raises ModelError if there is no layer or a level is not below the one above it.
        """
    @property
    def bottom_level(self) -> float:
        """Bottom level of the bottom-most layer [m]."""
    @property
    def top_level(self) -> float:
        """Top level of the first layer [m]."""
    @property
    def layers(self) -> list[tuple[float, str]]:
        """Pairs of top level [m] and material name, from top to bottom, as a new list."""
    def _serialize(self) -> dict[str, Any]:
        """Return the geometry's part of the document as a new mapping."""

class Model1D(_Model):
    """Model for a 1D D-Settlement analysis.

    The soil is one column: layers above a bottom level, with a phreatic level and one vertical at
    x = 0. A new model has one layer of "Undetermined" from 0.0 down to -10.0 m.

        model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
        model.create_material("my_mat", 21.0, 19.0, color=Color(0, 0, 0))
        model.update_geometry(-1.0, [(1.0, "Loam"), (0.0, "my_mat")], phreatic_level=-3.0)
        model.create_uniform_load("my_load", 0, 18.0, 0.5, 1.5)
        model.set_calculation_times(100, 1000, 10000)
        input_file = model.generate_input_file()

    Units: metres for levels, days for times, kN/m³ for unit weights, kPa for pressures. Values
    are kept as given; nothing is converted.
    """
    def __init__(
        self,
        calculation_model: CalculationModel,
        consolidation_model: ConsolidationModel,
        create_default_materials: bool = True,
        *,
        natural_strain: bool = False,
        water_unit_weight: float = 9.81,
        verticals_discretization: int = 100,
        verticals_z_coordinate: float = 0.0,
        maintain_profile: bool = False,
        profile_unit_weight_above_phreatic_level: float = 10.0,
        profile_unit_weight_below_phreatic_level: float = 10.0,
        end_of_settlement_calculation: int = 10000,
        vertical_drain: VerticalDrain | None = None,
    ) -> None:
        """Make a model with the default geometry.

        calculation_model: specifies which calculation model is used.
        consolidation_model: specifies which consolidation model is used.
        create_default_materials: start with default materials or none.
        natural_strain: if False -> linear strain; only NEN_KOPPEJAN listens to it.
        water_unit_weight: in [kN/m³].
        verticals_discretization: number of elements along the vertical, from 5 to 500.
        verticals_z_coordinate: z coordinate of the vertical [m].
        maintain_profile: whether the profile is maintained by superelevation.
        profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
            unit weight of the superelevation [kN/m³].
        end_of_settlement_calculation: [days]; no calculation time may lie behind it.
        vertical_drain: parameters for vertical drains, or None (default) to disable option.

        Raises ModelError if an option is out of its range, KeyError if calculation_model is not a
        member of CalculationModel.
        """
    @property
    def bottom_level(self) -> float:
        """Bottom level of the bottom-most layer [m]."""
    @property
    def top_level(self) -> float:
        """Top level of the first layer [m]."""
    @property
    def layers(self) -> list[tuple[float, str]]:
        """Pairs of top level [m] and material name, from top to bottom, as a new list."""
    @property
    def phreatic_level(self) -> float | None:
        """Phreatic level [m], or None."""
    def update_geometry(
        self,
        bottom_level: float,
        layers: Sequence[tuple[float, str]],
        phreatic_level: float | None = None,
    ) -> None:
        """Overwrite the current (default if not updated before) geometry with the given data.

        bottom_level: bottom level of the bottom-most layer [m].
        layers: list of layers defined by top level [m] and material name, defined from top to bottom.
            Each material is created beforehand with create_material or is one of the default
            materials. The list is kept, not copied.
        phreatic_level: [m], or None; not carried over from the geometry before.

        Raises ModelError if a material does not exist, if there is no layer, if a top level is not
        below that of the layer above, or if the lowest top level is not above the bottom level. The
        model then keeps the geometry that it had.
        """
    def _serialize(self) -> dict[str, Any]:
        """Return the model's document as a new mapping: what all models share, then
        'model_type' and 'geometry'.
        """
    @property
    def _min_vertical_drains(self) -> float:
        """Lowest level for vertical drains [m]: the bottom."""
    @property
    def _max_vertical_drains(self) -> float:
        """Highest level for vertical drains [m]: the top."""

class _Point:
    """A point of the cross-section.

    Points are equal if both coordinates are; there is no tolerance, and nothing is converted.
    """
    def __init__(self, x: float, y: float) -> None:
        """Keep the coordinates as given; nothing is checked.

        x: x coordinate [m].
        y: y coordinate [m].
        """
    @property
    def x(self) -> float:
        """x coordinate [m]."""
    @property
    def y(self) -> float:
        """y coordinate [m]."""
    def __eq__(self, other: object) -> bool:
        """Return self == other."""
    def __hash__(self) -> int:
        """Return hash(self)."""
    def __repr__(self) -> str:
        """Return the text form, such as "_Point(25, 10.0)"."""
    def __setattr__(self, name: str, value: Any) -> None:
        """Implement setattr(self, name, value)."""
    def __delattr__(self, name: str) -> None:
        """Implement delattr(self, name)."""

class _Curve:
    """A straight segment between two points, from the lower x to the higher.

    Curves are equal if both end points are, so that the order in which the points were given
    matters for vertical curves only.
    """
    def __init__(self, p1: _Point, p2: _Point) -> None:
        """Order the two points by x; points with the same x keep their order.

        p1, p2: the end points, kept as the very objects.

        Raises ModelError if the points are equal.
        """
    @property
    def p1(self) -> _Point:
        """End point with the lower x."""
    @property
    def p2(self) -> _Point:
        """End point with the higher x."""
    def __eq__(self, other: object) -> bool:
        """Return self == other."""
    def __hash__(self) -> int:
        """Return hash(self)."""
    def __repr__(self) -> str:
        """Return the text form, such as "_Curve(_Point(0, 1.0), _Point(2, 1.0))"."""
    def __setattr__(self, name: str, value: Any) -> None:
        """Implement setattr(self, name, value)."""
    def __delattr__(self, name: str) -> None:
        """Implement delattr(self, name)."""

class _CurveList:
    """Boundaries and Pl-lines are curve lists."""
    def __init__(self, curves: Sequence[_Curve]) -> None:
        """Consist of only unique curves; guaranteed upon creation of _Boundary and _PlLine.

        curves: the chain from left to right; the list is kept, not copied.

        Raises AssertionError if a curve does not begin where the one before it ends.
        """
    def __eq__(self, other: object) -> bool:
        """Return self == other."""
    def __hash__(self) -> int:
        """Return hash(self)."""
    @property
    def curves(self) -> list[_Curve]:
        """The curves from left to right, as a new list."""
    @property
    def points(self) -> list[_Point]:
        """The points from left to right, as a new list: one more than there are curves.

        Raises IndexError if there is no curve.
        """
    def area_above_horizontal(self, y: float = 0.0) -> float:
        """Area above horizontal line defined by y-coordinate.

        y: level of the line [m].

        Returns the area by the trapezium rule [m²]; what lies below the line counts negative.
        """
    def __setattr__(self, name: str, value: Any) -> None:
        """Implement setattr(self, name, value)."""
    def __delattr__(self, name: str) -> None:
        """Implement delattr(self, name)."""

class _PlLine(_CurveList):
    """Piezometric level line."""

class _Boundary(_CurveList):
    """Boundary."""

class _Layer:
    """The soil between two boundaries, with the pressure at its top and at its bottom.

    Each object is equal only to itself.
    """
    def __init__(
        self,
        boundary_top: _Boundary,
        boundary_bottom: _Boundary,
        material: str,
        pl_line_top: _PlLine | Literal[0, 99],
        pl_line_bottom: _PlLine | Literal[0, 99],
    ) -> None:
        """Keep the five values; nothing is checked.

        boundary_top, boundary_bottom: boundaries at the top and at the bottom.
        material: name of the material.
        pl_line_top, pl_line_bottom: pl-line at the top and at the bottom, or 0 for no pressure, or
            99 for interpolation.
        """
    @property
    def material(self) -> str:
        """Name of the material."""
    @property
    def boundary_top(self) -> _Boundary:
        """Boundary at the top."""
    @property
    def boundary_bottom(self) -> _Boundary:
        """Boundary at the bottom."""
    @property
    def pl_line_top(self) -> _PlLine | Literal[0, 99]:
        """Pl-line at the top, or 0 for no pressure, or 99 for interpolation."""
    @property
    def pl_line_bottom(self) -> _PlLine | Literal[0, 99]:
        """Pl-line at the bottom, or 0 for no pressure, or 99 for interpolation."""

class Model2D(_Model):
    """Model for a 2D D-Settlement analysis.

    The soil is a cross-section between two limits: layers from bottom to top, each between two
    boundaries, and pl-lines for the pressures in them. Points are created one list per boundary
    or pl-line; what repeats is folded together.

        model = Model2D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI,
                        [(0.0, 0.0), (100.0, 0.0)])
        model.create_material("Clay", 14.0, 14.0, cp=30, cp1=10, cs=300, cs1=100, cv=1e-7)
        pl_line = model.create_pl_line(
            [model.create_point(0.0, 4.0), model.create_point(100.0, 4.0)], is_phreatic=True)
        top = [model.create_point(x, y) for x, y in [(0.0, 5.0), (50.0, 6.0), (100.0, 5.0)]]
        model.create_layer(top, "Clay", pl_line, pl_line)
        model.create_vertical(50.0)
        model.create_non_uniform_load("dam", [(0.0, 5.0), (50.0, 8.0), (100.0, 5.0)])
        model.set_calculation_times(100, 1000, 10000)
        input_file = model.generate_input_file()

    Units: metres for coordinates, days for times, kN/m³ for unit weights, kPa for pressures.
    Values are kept as given; nothing is converted.
    """

    _points: list[_Point]
    _pl_lines: list[_PlLine]
    _phreatic_line: int
    _boundaries: list[_Boundary]
    _layers: list[_Layer]
    def __init__(
        self,
        calculation_model: CalculationModel,
        consolidation_model: ConsolidationModel,
        boundary_bottom: Sequence[tuple[float, float]],
        create_default_materials: bool = True,
        *,
        natural_strain: bool = False,
        limits: tuple[float, float] = (0.0, 100.0),
        water_unit_weight: float = 9.81,
        verticals_discretization: int = 100,
        verticals_z_coordinate: float = 0.0,
        maintain_profile: bool = False,
        profile_time: int = 0,
        profile_unit_weight_above_phreatic_level: float = 10.0,
        profile_unit_weight_below_phreatic_level: float = 10.0,
        end_of_settlement_calculation: int = 10000,
        stress_distribution_loads: bool = False,
        vertical_drain: VerticalDrain | None = None,
    ) -> None:
        """Make a model with its bottom boundary and no layer.

        calculation_model: specifies which calculation model is used.
        consolidation_model: specifies which consolidation model is used.
        boundary_bottom: the bottom boundary of the geometry, as x-y pairs from the left limit to
            the right [m].
        create_default_materials: start with default materials or none.
        natural_strain: if False -> linear strain; only NEN_KOPPEJAN listens to it.
        limits: left and right x limit of the geometry [m].
        water_unit_weight: in [kN/m³].
        verticals_discretization: number of elements along a vertical, from 5 to 500.
        verticals_z_coordinate: z coordinate of the verticals [m].
        maintain_profile: whether the profile is maintained by superelevation.
        profile_time: time of the superelevation [days], from 0 to 100000 and not above
            end_of_settlement_calculation.
        profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
            unit weight of the superelevation [kN/m³].
        end_of_settlement_calculation: [days]; no calculation time may lie behind it.
        stress_distribution_loads: True for "Simulate", False for "None".
        vertical_drain: parameters for vertical drains, or None (default) to disable option.

        Raises ModelError if an option is out of its range or if the bottom boundary does not run
        from limit to limit and from left to right, KeyError if calculation_model is not a member of
        CalculationModel, IndexError if boundary_bottom is empty, ValueError if one of its entries is
        no pair.
        """
    def __getstate__(self) -> Any:
        """Return what a copy or a pickle of the model is made of."""
    def create_point(self, x: float, y: float) -> _Point:
        """Create a point for a boundary or a pl-line.

        x: x coordinate [m].
        y: y coordinate [m].

        Returns the new point. Equal points may be created; the first of them is the one that is
        referred to in the input file.
        """
    @property
    def _curves(self) -> list[_Curve]:
        """The curves of all boundaries from low to high, then those of all pl-lines, as a new list.

        A curve that several chains share occurs once per chain.
        """
    def _create_curves(self, points: Sequence[_Point]) -> list[_Curve]:
        """Return the curves between neighbouring points as a new list.

        points: from the left limit of the model to the right.

        Raises ModelError if the first or the last point is off its limit, or if two neighbours are
        equal; IndexError if there is no point.
        """
    def _create_curve(self, p1: _Point, p2: _Point) -> _Curve:
        """Return the curve between two points: the first equal one of the model, or a new one.

        p1, p2: the points.

        Raises ModelError if the points are equal.
        """
    def _create_boundary(self, points: Sequence[_Point]) -> _Boundary:
        """Return the boundary through the points: the equal one of the model, or a new one.

        points: from the left limit of the model to the right.

        A new boundary takes its place among the others by its area above y = 0.

        Raises ModelError if the points do not run from limit to limit or not from left to right; the
        model then stays as it is.
        """
    def create_pl_line(self, points: Sequence[_Point], is_phreatic: bool = False) -> _PlLine:
        """Create a piezometric level line, or find it again.

        points: made with create_point, from the left limit of the model to the right; two points may
            share an x coordinate.
        is_phreatic: whether to set the current pl-line as the phreatic line. A model has one
            phreatic line, which stays; for a pl-line that exists already this is not looked at.

        Returns the pl-line; if the model has one along the same points, that one.

        Raises ModelError if the points do not run from limit to limit, if neighbours are equal or do
        not run from left to right; the model then stays as it is. Raises ModelError too if the
        phreatic line is set already; the new pl-line is kept then.
        """
    def create_layer(
        self,
        boundary_top: Sequence[_Point],
        material: str,
        pl_line_top: _PlLine | Literal[0, 99],
        pl_line_bottom: _PlLine | Literal[0, 99],
    ) -> _Layer:
        """Define layers from bottom to top.

        boundary_top: points of the boundary at the top, made with create_point, from the left limit
            of the model to the right; two points may share an x coordinate.
        material: name of the material, made with create_material or one of the default materials.
        pl_line_top, pl_line_bottom: pl-line at the top and at the bottom, made with create_pl_line,
            or 0 for no pressure, or 99 for interpolation, which neither the bottom of the first layer
            nor the top of the last may have.

        Returns the new layer. It lies on the layer created before it, the first one on the lowest
        boundary of the model.

        Raises ModelError if the material does not exist, if a pl-line is another integer than 0 and
        99, if the bottom of the first layer is 99, or if the points do not run from limit to limit
        or not from left to right; the model then stays as it is. Raises ModelError too if top and
        bottom are the same; a new boundary is kept then.
        """
    def create_vertical(self, x: float) -> _Vertical:
        """Create vertical based on x-coordinate.

        x: x coordinate [m], between the limits of the model, both included.

        Returns the vertical; if the model has one at the same x, that one. The verticals are kept in
        the order of x.

        Raises ModelError if x lies outside the limits; the model then stays as it is.
        """
    def create_non_uniform_load(
        self,
        name: str,
        points: Sequence[tuple[float, float]],
        time: int = 0,
        end_time: int = 0,
        gamma_dry: float = 10.0,
        gamma_wet: float = 10.0,
        temporary: bool = False,
    ) -> _NonUniformLoad:
        """Create a load by the weight of the soil below a polyline.

        name: name of the load, at most 25 characters; must be new among the non-uniform loads.
        points: x-y coordinates from left to right [m]. The first and the last must each be a point
            of a boundary or of an earlier non-uniform load. The list is kept, not copied.
        time: the moment the load is laid down [days]; -1 makes it an initial load.
        end_time: the moment the load is removed [days], only for temporary loads; not before time,
            temporary or not.
        gamma_dry: total unit weight above phreatic level [kN/m³].
        gamma_wet: total unit weight below phreatic level [kN/m³].
        temporary: whether the load is a temporary load.

        Returns the new load.

        Raises ModelError if the name is too long or exists already, if the first or the last point is
        on no point of a boundary or load, if time is greater than end_time, or if an x coordinate is
        less than the one before it; the model then stays as it is. Raises IndexError if there is no
        point.
        """
    def _validate(self) -> None:
        """Check the finished model; runs before each generation of an input file.

        Raises ModelError for the first check that fails: the vertical drains against limits and
        levels, at least one layer, no interpolation at the top of the top layer, a phreatic line.
        The model stays as it is.
        """
    @property
    def _min_vertical_drains(self) -> float:
        """Lowest level for vertical drains [m]: the highest point of the bottom of the geometry.

        Raises ModelError if there is no layer.
        """
    @property
    def _max_vertical_drains(self) -> float:
        """Highest level for vertical drains [m]: the highest point of the top of the geometry.

        Raises ModelError if there is no layer.
        """
    def _serialize(self) -> dict[str, Any]:
        """Return the model's document as a new mapping: what all models share, then 'model_type',
        'points', 'curves', 'boundaries', 'pl_lines', 'layers' and 'phreatic_line'.

        A reference is the number of the first equal entry. Raises ValueError if a chain has a point
        or a layer a pl-line that the model does not know.
        """
    def _serialize_points(self) -> list[tuple[float, float, float]]:
        """Return a new list with the triple (x, y, 0) of each point, in the order of creation."""
    def _serialize_curves(self) -> list[tuple[int, int]]:
        """Return a new list with the two point numbers of each curve, counted from 1."""
    def _serialize_boundaries(self) -> list[list[int]]:
        """Return a new list with the curve numbers of each boundary, from low to high, counted from 1."""
    def _serialize_pl_lines(self) -> list[list[int]]:
        """Return a new list with the curve numbers of each pl-line, in the order of creation, counted
        from 1.
        """
    def _serialize_layers(self) -> list[dict[str, Any]]:
        """Return a new list with the material, boundaries and pl-lines of each layer, the bottom layer
        first. Boundaries are counted from 0, pl-lines from 1.
        """

class DSettlementAnalysis(ExternalProgram):
    """One D-Settlement calculation on a worker.

    analysis = DSettlementAnalysis(model.generate_input_file())
    analysis.execute(timeout=60)
    parser = OutputFileParser(analysis.get_sld_file())
    """

    input_file: BytesIO | File
    def __init__(self, input_file: BytesIO | File) -> None:
        """Keep the input file, which is read when the job starts.

        input_file: content of an input file (.sli), as a BytesIO or a File.
        """
    def _handle_execution_error(self, message: str) -> None:
        """Raise the exception that stands for a known error message of the worker.

        message: what the worker reported; an unknown one is left to the caller.
        """
    def _generate_job_content(self) -> _JobContent:
        """Return the job for the worker: the input file in base64."""
    @overload
    def get_output_file(
        self, extension: str = ".sld", *, as_file: Literal[False] = False
    ) -> BytesIO | None:
        """Return an output file of the finished calculation.

        extension: one of ".sld", ".slo", ".error.log" and ".err".
        as_file: whether to return a File instead of a BytesIO.

        Returns the content as a BytesIO or a File, or None if there is no such output.
        """
    @overload
    def get_output_file(self, extension: str = ".sld", *, as_file: Literal[True]) -> File | None:
        """Return an output file of the finished calculation.

        extension: one of ".sld", ".slo", ".error.log" and ".err".
        as_file: whether to return a File instead of a BytesIO.

        Returns the content as a BytesIO or a File, or None if there is no such output.
        """
    @overload
    def get_output_file(
        self, extension: str = ".sld", *, as_file: bool = False
    ) -> BytesIO | File | None:
        """Return an output file of the finished calculation.

        extension: one of ".sld", ".slo", ".error.log" and ".err".
        as_file: whether to return a File instead of a BytesIO.

        Returns the content as a BytesIO or a File, or None if there is no such output.
        """
    @overload
    def get_sld_file(self, *, as_file: Literal[False] = False) -> StringIO:
        """Return the result file (.sld) of the finished calculation.

        as_file: whether to return a File instead of a StringIO.

        Returns the text as a StringIO at its start, for OutputFileParser, or a File.

        Raises ValueError if there is no such output, UnicodeDecodeError if it is not UTF-8.
        """
    @overload
    def get_sld_file(self, *, as_file: Literal[True]) -> File:
        """Return the result file (.sld) of the finished calculation.

        as_file: whether to return a File instead of a StringIO.

        Returns the text as a StringIO at its start, for OutputFileParser, or a File.

        Raises ValueError if there is no such output, UnicodeDecodeError if it is not UTF-8.
        """
    @overload
    def get_sld_file(self, *, as_file: bool = False) -> StringIO | File:
        """Return the result file (.sld) of the finished calculation.

        as_file: whether to return a File instead of a StringIO.

        Returns the text as a StringIO at its start, for OutputFileParser, or a File.

        Raises ValueError if there is no such output, UnicodeDecodeError if it is not UTF-8.
        """

class OutputFileParser:
    """Helper class to extract results from a D-Settlement output file (.sld).

    Construct it with the text of a finished analysis, then read the results:

        parser = OutputFileParser(sld_file)
        parser.vertical_results
        parser.residual_times

    Nothing is kept between reads: each parses the text afresh and returns new objects.
    """

    _results: str
    _FILE_NAME_PATTERN: ClassVar[re.Pattern[str]]
    _RESULTS_PATTERN: ClassVar[re.Pattern[str]]
    _VERTICAL_PATTERN: ClassVar[re.Pattern[str]]
    _COORDINATE_PATTERN: ClassVar[re.Pattern[str]]
    _TIME_SETTLEMENT_PER_LOAD_PATTERN: ClassVar[re.Pattern[str]]
    _DEPTHS_PATTERN: ClassVar[re.Pattern[str]]
    _LEAKAGES_PATTERN: ClassVar[re.Pattern[str]]
    _DRAINED_LAYERS_PATTERN: ClassVar[re.Pattern[str]]
    _STRESSES_PATTERN: ClassVar[re.Pattern[str]]
    _TIME_DEPENDENT_DATA_PATTERN: ClassVar[re.Pattern[str]]
    _VERTICAL_DATA_AT_TIME: ClassVar[re.Pattern[str]]
    _RESIDUAL_SETTLEMENTS_PATTERN: ClassVar[re.Pattern[str]]
    def __init__(self, sld_file: StringIO) -> None:
        """Cut the [Results] block out of the file.

        sld_file: the output of the analysis; any object whose `getvalue` gives the text will do.

        Raises ParsingError if the text has no [Results] block.
        """
    @property
    def raw_results(self) -> str:
        """Raw result data. For convenience, specific data can also be extracted using available methods."""
    @property
    def vertical_results(self) -> dict[int, VerticalResult]:
        """Returns results for all verticals.

        A mapping of the vertical's number, from 1, to a mapping with the keys

        coordinates: `x` and `z` [m], as far as the file has them;
        depths, leakages, drained_layers: one number per line of the file; depths in m;
        stresses: header to list of numbers [kPa]; empty for files that D-Settlement itself wrote, in
            which a blank follows "Depth step count";
        time_settlement_per_load: `load_step_count`, `time_step_count`, `time` [days], and `load_1` and
            onwards;
        vertical_data: time [days] to a mapping of header to list of numbers.

        Headers are the lines of the file to the letter. A block that is absent or incomplete gives an
        empty container.

        Raises ValueError for a field that is no number, and IndexError for a row with too few fields.
        """
    @property
    def residual_times(self) -> dict[int, ResidualSettlements]:
        """Returns the residual times.

        A mapping of the vertical's number in the file to a mapping of header, such as `Time` and
        `Settlement`, to a list with one number per row. It is empty if the file has no such block, or one
        without rows, as without calculation times.

        Raises ValueError for a field that is no number, and IndexError for a row with too few fields. In
        some files of D-Settlement the first such block has no rows and runs on to the end of a second one:
        that raises ValueError too.
        """
    @classmethod
    def _parse_results(cls, sld_file: str) -> str:
        """Return the [Results] block of a text, tags included.

        Raises ParsingError if there is none.
        """
    @classmethod
    def _parse_verticals(cls, results: str) -> dict[int, dict[str, Any]]:
        """Return the results of all [Vertical] blocks, by number from 1."""
    @classmethod
    def _parse_vertical(cls, vertical: str) -> dict[str, Any]:
        """Return the results of one [Vertical] block, given with its tags."""
    @classmethod
    def _parse_residual_settlements(cls, results: str) -> dict[int, dict[str, list[float]]]:
        """Return the residual settlements: vertical, then header, to a list of numbers."""

# For type checkers alone.

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
    load_1: list[float]
    load_2: list[float]
    load_3: list[float]
    load_4: list[float]
    load_5: list[float]
    load_6: list[float]
    load_7: list[float]
    load_8: list[float]
    load_9: list[float]
    load_10: list[float]
    load_11: list[float]
    load_12: list[float]
    load_13: list[float]
    load_14: list[float]
    load_15: list[float]
    load_16: list[float]
    load_17: list[float]
    load_18: list[float]
    load_19: list[float]
    load_20: list[float]
    load_21: list[float]
    load_22: list[float]
    load_23: list[float]
    load_24: list[float]
    load_25: list[float]
    load_26: list[float]
    load_27: list[float]
    load_28: list[float]
    load_29: list[float]
    load_30: list[float]
    load_31: list[float]
    load_32: list[float]
    load_33: list[float]
    load_34: list[float]
    load_35: list[float]
    load_36: list[float]
    load_37: list[float]
    load_38: list[float]
    load_39: list[float]
    load_40: list[float]
    load_41: list[float]
    load_42: list[float]
    load_43: list[float]
    load_44: list[float]
    load_45: list[float]
    load_46: list[float]
    load_47: list[float]
    load_48: list[float]
    load_49: list[float]
    load_50: list[float]

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

type Boundary = _Boundary
"""A line between two layers, as `layer.boundary_top`."""

type Curve = _Curve
"""A straight part of a boundary or a pl-line."""

type Layer = _Layer
"""What `Model2D.create_layer` returns."""

type Load = _Load
"""A load of any kind."""

type Material = _Material
"""A value of `materials`."""

type NonUniformLoad = _NonUniformLoad
"""What `Model2D.create_non_uniform_load` returns."""

type PlLine = _PlLine
"""What `Model2D.create_pl_line` returns."""

type Point = _Point
"""What `Model2D.create_point` returns."""

type PorePressure = _PlLine | Literal[0, 99]
"""What the water does at a side of a layer: a pl-line, 0 for none, 99 for interpolation."""

type UniformLoad = _UniformLoad
"""A load on the whole surface."""

type Vertical = _Vertical
"""What `Model2D.create_vertical` returns."""

type ResidualSettlements = dict[str, list[float]]
"""Lists by header, such as `Time` and `Settlement`: the residual settlements of a vertical."""
