// The class _Geometry1D: a column of horizontal layers.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_geometry_1d(host::Module& module, State& state);

}  // namespace dsettlement::geometry
