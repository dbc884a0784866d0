// The class _NonUniformLoad and how a two-dimensional model gets one.
#pragma once

#include "host/operation.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

void define_non_uniform_load(host::Module& module, State& state);

extern const host::Operation<State> create_non_uniform_load;

}  // namespace dsettlement::soil
