// The classes _CurveList, _PlLine and _Boundary: chains of curves.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_curve_lists(host::Module& module, State& state);

}  // namespace dsettlement::geometry
