// What the operations of the model frame work with.
#pragma once

#include "host/counted_fields.hpp"
#include "host/record_class.hpp"
#include "toolkit.hpp"

namespace dsettlement::model {

struct State {
  State(host::Module& module, const Toolkit& shared) : toolkit(shared), module_(module) {}

  const Toolkit& toolkit;

 private:
  host::Module& module_;

 public:
  host::Global calculation_model{module_, "CalculationModel"};
  host::Global consolidation_model{module_, "ConsolidationModel"};
  host::RecordClass vertical{module_, "_Vertical"};
  host::Global model{module_, "_Model"};

  host::CountedFields fields_of_verticals{module_, {"_x"}};

  struct Names {
    host::Name init{"__init__"};
    host::Name private_serialize{"_serialize"};
    host::Name value{"value"};
    host::Name copy{"copy"};

    host::Name nen_koppejan{"NEN_KOPPEJAN"};
    host::Name nen_bjerrum{"NEN_BJERRUM"};
    host::Name isotache{"ISOTACHE"};

    host::Name x{"x"};
    host::Name private_x{"_x"};

    // Attributes of a model.
    host::Name private_calculation_model{"_calculation_model"};
    host::Name private_consolidation_model{"_consolidation_model"};
    host::Name private_natural_strain{"_natural_strain"};
    host::Name private_reliability_analysis{"_reliability_analysis"};
    host::Name private_fit_for_settlement_plate{"_fit_for_settlement_plate"};
    host::Name private_horizontal_displacements{"_horizontal_displacements"};
    host::Name private_limits{"_limits"};
    host::Name private_water_unit_weight{"_water_unit_weight"};
    host::Name private_verticals_discretization{"_verticals_discretization"};
    host::Name private_verticals_z_coordinate{"_verticals_z_coordinate"};
    host::Name private_maintain_profile{"_maintain_profile"};
    host::Name private_profile_time{"_profile_time"};
    host::Name private_profile_unit_weight_above{"_profile_unit_weight_above_phreatic_level"};
    host::Name private_profile_unit_weight_below{"_profile_unit_weight_below_phreatic_level"};
    host::Name private_end_of_settlement_calculation{"_end_of_settlement_calculation"};
    host::Name private_stress_distribution_loads{"_stress_distribution_loads"};
    host::Name private_has_vertical_drains{"_has_vertical_drains"};
    host::Name private_vertical_drain{"_vertical_drain"};
    host::Name private_default_vertical_drain{"_DEFAULT_VERTICAL_DRAIN"};
    host::Name private_default_materials{"_DEFAULT_MATERIALS"};
    host::Name create_material{"create_material"};
    host::Name color{"color"};
    host::Name private_materials{"_materials"};
    host::Name private_verticals{"_verticals"};
    host::Name private_non_uniform_loads{"_non_uniform_loads"};
    host::Name private_other_loads{"_other_loads"};
    host::Name private_calculation_times{"_calculation_times"};

    host::Name private_serialize_materials{"_serialize_materials"};
    host::Name private_serialize_verticals{"_serialize_verticals"};
    host::Name private_serialize_non_uniform_loads{"_serialize_non_uniform_loads"};
    host::Name private_serialize_other_loads{"_serialize_other_loads"};

    // Keys of the document.
    struct Keys {
      host::Name calculation_model{"calculation_model"};
      host::Name consolidation_model{"consolidation_model"};
      host::Name strain_type{"strain_type"};
      host::Name natural{"Natural"};
      host::Name linear{"Linear"};
      host::Name maintain_profile{"maintain_profile"};
      host::Name profile_time{"profile_time"};
      host::Name profile_unit_weight_above{"profile_unit_weight_above_phreatic_level"};
      host::Name profile_unit_weight_below{"profile_unit_weight_below_phreatic_level"};
      host::Name end_of_settlement_calculation{"end_of_settlement_calculation"};
      host::Name verticals_discretization{"verticals_discretization"};
      host::Name verticals_z_coordinate{"verticals_z_coordinate"};
      host::Name stress_distribution_loads{"stress_distribution_loads"};
      host::Name has_vertical_drains{"has_vertical_drains"};
      host::Name soils{"soils"};
      host::Name verticals{"verticals"};
      host::Name non_uniform_loads{"non_uniform_loads"};
      host::Name other_loads{"other_loads"};
      host::Name residual_times{"residual_times"};
      host::Name vertical_drain{"vertical_drain"};
    } keys;
  } names;
};

}  // namespace dsettlement::model
