// The class _Layer: the soil between two boundaries.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_layer(host::Module& module, State& state);

}  // namespace dsettlement::geometry
