// The options of a model as its constructors declare them. The frame has them all; a concrete model
// offers some and hands them on.
#pragma once

#include <initializer_list>
#include <span>

#include "host/operation.hpp"

namespace dsettlement::model::options {

using host::flag;
using host::keyword_only;
using host::number;
using host::Parameter;

// Between which bounds some of them lie.
inline constexpr long fewest_elements = 5;
inline constexpr long most_elements = 500;
inline constexpr long latest_profile_time = 100000;

inline constexpr Parameter calculation_model{"calculation_model", "CalculationModel"};
inline constexpr Parameter consolidation_model{"consolidation_model", "ConsolidationModel"};
inline constexpr Parameter create_default_materials{"create_default_materials", "bool", flag(true)};
inline constexpr auto natural_strain = keyword_only("natural_strain", "bool", flag(false));
inline constexpr auto limits =
    keyword_only("limits", "tuple[float, float]", host::pair(0.0, 100.0));
inline constexpr auto water_unit_weight = keyword_only("water_unit_weight", "float", number(9.81));
inline constexpr auto verticals_discretization =
    keyword_only("verticals_discretization", "int", number(100));
inline constexpr auto verticals_z_coordinate =
    keyword_only("verticals_z_coordinate", "float", number(0.0));
inline constexpr auto maintain_profile = keyword_only("maintain_profile", "bool", flag(false));
inline constexpr auto profile_time = keyword_only("profile_time", "int", number(0));
inline constexpr auto profile_unit_weight_above_phreatic_level =
    keyword_only("profile_unit_weight_above_phreatic_level", "float", number(10.0));
inline constexpr auto profile_unit_weight_below_phreatic_level =
    keyword_only("profile_unit_weight_below_phreatic_level", "float", number(10.0));
inline constexpr auto end_of_settlement_calculation =
    keyword_only("end_of_settlement_calculation", "int", number(10000));
inline constexpr auto stress_distribution_loads =
    keyword_only("stress_distribution_loads", "bool", flag(false));
inline constexpr auto vertical_drain =
    keyword_only("vertical_drain", "VerticalDrain", host::no_object);

// Calls the constructor of the frame with the first three options by position and with every option
// that `parameters` declares as keyword-only by its name.
void hand_on(host::Handle frame_constructor, std::initializer_list<host::Handle> first_three,
             std::span<const Parameter> parameters, host::Arguments arguments);

}  // namespace dsettlement::model::options
