// The class Model2D.
#pragma once

#include "geometry/state.hpp"
#include "soil/state.hpp"

namespace dsettlement::geometry {

void define_model_2d(host::Module& module, State& state, soil::State& soil);

}  // namespace dsettlement::geometry
