// The class Model1D.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

void define_model_1d(host::Module& module, State& state);

}  // namespace dsettlement::geometry
