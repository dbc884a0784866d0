// The class _Curve: a straight segment between two points.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_curve(host::Module& module, State& state);

}  // namespace dsettlement::geometry
