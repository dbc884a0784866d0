// The class _Point: a pair of coordinates.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_point(host::Module& module, State& state);

}  // namespace dsettlement::geometry
