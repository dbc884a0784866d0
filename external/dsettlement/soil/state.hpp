// What the operations on soil, loads and drains work with.
#pragma once

#include <vector>

#include "host/constructor.hpp"
#include "host/containers.hpp"
#include "soil/vocabulary.hpp"
#include "toolkit.hpp"

namespace dsettlement::soil {

struct State {
  State(host::Module& module, const Toolkit& shared) : toolkit(shared), module_(module) {
    host::Mapping defaults;
    for (const auto& [parameter, key] : vocabulary) {
      vocabulary_keys.emplace_back(key);
      vocabulary_defaults.push_back(module.constant(parameter.value));
      defaults.put(vocabulary_keys.back(), vocabulary_defaults.back());
    }
    default_vocabulary = defaults.done();
  }

  const Toolkit& toolkit;

 private:
  host::Module& module_;

 public:
  host::Global material{module_, "_Material"};
  host::Global load{module_, "_Load"};
  host::Global other_load{module_, "_OtherLoad"};
  host::Global uniform_load{module_, "_UniformLoad"};
  host::Global non_uniform_load{module_, "_NonUniformLoad"};
  host::Global drain_type{module_, "DrainType"};
  host::Global drain_grid{module_, "DrainGrid"};
  host::Global drainage_simple_mode{module_, "DrainageSimpleMode"};
  host::Global vertical_drain{module_, "VerticalDrain"};

  host::Constructor material_constructor{module_};

  // The soil vocabulary as it stands in the document, in step with the table of parameters: the
  // keys, the defaults, and both together as the mapping of a material that leaves everything to
  // them.
  std::vector<host::Name> vocabulary_keys;
  std::vector<host::Ref> vocabulary_defaults;
  host::Slot default_vocabulary{module_};

  struct Names {
    host::Name init{"__init__"};
    host::Name private_serialize{"_serialize"};
    host::Name name{"name"};
    host::Name value{"value"};
    host::Name type{"type"};
    host::Name time{"time"};

    // Attributes of a model.
    host::Name private_materials{"_materials"};
    host::Name private_other_loads{"_other_loads"};
    host::Name private_non_uniform_loads{"_non_uniform_loads"};
    host::Name private_add_other_load{"_add_other_load"};
    host::Name private_limits{"_limits"};
    host::Name private_has_vertical_drains{"_has_vertical_drains"};
    host::Name private_vertical_drain{"_vertical_drain"};
    host::Name private_min_vertical_drains{"_min_vertical_drains"};
    host::Name private_max_vertical_drains{"_max_vertical_drains"};

    // Materials.
    host::Name gam_dry{"gam_dry"};
    host::Name gam_wet{"gam_wet"};
    host::Name color{"color"};
    host::Name private_color{"_color"};
    host::Name private_kwargs{"_kwargs"};
    host::Name random{"random"};
    host::Name deltares{"deltares"};
    host::Name from_deltares{"from_deltares"};

    // Loads.
    host::Name unit_weight{"unit_weight"};
    host::Name height{"height"};
    host::Name y_application{"y_application"};
    host::Name private_name{"_name"};
    host::Name points{"points"};
    host::Name private_points{"_points"};
    host::Name private_time{"_time"};
    host::Name private_end_time{"_end_time"};
    host::Name gamma_dry{"gamma_dry"};
    host::Name private_gamma_dry{"_gamma_dry"};
    host::Name gamma_wet{"gamma_wet"};
    host::Name private_gamma_wet{"_gamma_wet"};
    host::Name temporary{"temporary"};
    host::Name private_temporary{"_temporary"};

    // What a load of soil may rest on.
    host::Name private_boundaries{"_boundaries"};
    host::Name values{"values"};
    host::Name x{"x"};
    host::Name y{"y"};

    // Drains: attributes and keys, which differ by an underscore for what is private.
    host::Name strip{"STRIP"};
    host::Name sand_wall{"SAND_WALL"};
    host::Name triangular{"TRIANGULAR"};
    host::Name private_drain_type{"_drain_type"};
    host::Name range_from{"range_from"};
    host::Name range_to{"range_to"};
    host::Name bottom_position{"bottom_position"};
    host::Name center_to_center{"center_to_center"};
    host::Name width_diameter{"width_diameter"};
    host::Name thickness{"thickness"};
    host::Name private_thickness{"_thickness"};
    host::Name position_drain{"position_drain"};
    host::Name private_position_drain{"_position_drain"};
    host::Name grid{"grid"};
    host::Name private_grid{"_grid"};
    host::Name start_of_drainage{"start_of_drainage"};
    host::Name private_start_of_drainage{"_start_of_drainage"};
    host::Name phreatic_level{"phreatic_level"};
    host::Name phreatic_level_in_drain{"phreatic_level_in_drain"};
    host::Name private_phreatic_level_in_drain{"_phreatic_level_in_drain"};
    host::Name private_schedule{"_schedule"};
    host::Name schedule_type{"schedule_type"};
    host::Name detailed_schedule{"detailed_schedule"};
    host::Name begin_time{"begin_time"};
    host::Name end_time{"end_time"};
    host::Name underpressure{"underpressure"};
    host::Name dewatering{"dewatering_head_or_pressure"};
  } names;
};

}  // namespace dsettlement::soil
