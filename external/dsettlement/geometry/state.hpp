// What the concrete models work with.
#pragma once

#include "model/state.hpp"
#include "toolkit.hpp"

namespace dsettlement::geometry {

struct State {
  State(host::Module& module, const Toolkit& shared, const model::State& frame)
      : toolkit(shared), model(frame), module_(module) {}

  const Toolkit& toolkit;
  const model::State& model;

 private:
  host::Module& module_;

 public:
  host::Global geometry_1d{module_, "_Geometry1D"};
  host::Global model_1d{module_, "Model1D"};

  struct Names {
    host::Name init{"__init__"};
    host::Name serialize{"_serialize"};

    host::Name bottom_level{"bottom_level"};
    host::Name private_bottom_level{"_bottom_level"};
    host::Name top_level{"top_level"};
    host::Name layers{"layers"};
    host::Name private_layers{"_layers"};
    host::Name phreatic_level{"phreatic_level"};

    // Attributes of a model.
    host::Name geometry{"_geometry"};
    host::Name materials{"_materials"};
    host::Name verticals{"_verticals"};
    host::Name undetermined{"Undetermined"};

    // Keys of the document.
    host::Name model_type{"model_type"};
    host::Name geometry_key{"geometry"};

    // Options that a concrete model hands on.
    host::Name natural_strain{"natural_strain"};
    host::Name water_unit_weight{"water_unit_weight"};
    host::Name verticals_discretization{"verticals_discretization"};
    host::Name verticals_z_coordinate{"verticals_z_coordinate"};
    host::Name maintain_profile{"maintain_profile"};
    host::Name profile_unit_weight_above{"profile_unit_weight_above_phreatic_level"};
    host::Name profile_unit_weight_below{"profile_unit_weight_below_phreatic_level"};
    host::Name end_of_settlement_calculation{"end_of_settlement_calculation"};
    host::Name vertical_drain{"vertical_drain"};
  } names;
};

}  // namespace dsettlement::geometry
