// What a model starts with: the default materials and the drain that stands in the document of a
// model without drains.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

// A new mapping of name to (gam_dry, gam_wet, colour).
[[nodiscard]] host::Ref default_materials(const State& state);

// A new VerticalDrain.
[[nodiscard]] host::Ref default_vertical_drain(const State& state);

}  // namespace dsettlement::soil
