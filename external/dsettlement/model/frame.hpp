// The class _Model: what one-dimensional and two-dimensional models have in common.
#pragma once

#include "analysis/state.hpp"
#include "model/state.hpp"
#include "soil/state.hpp"

namespace dsettlement::model {

void define_model(host::Module& module, State& state, soil::State& soil, analysis::State& analysis);

}  // namespace dsettlement::model
