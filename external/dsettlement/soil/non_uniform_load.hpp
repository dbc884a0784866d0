// The class _NonUniformLoad and how a two-dimensional model gets one.
#pragma once

#include "host/class_body.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

void define_non_uniform_load(host::Module& module, State& state);

void add_non_uniform_loads(host::ClassBody& body, State& state);

}  // namespace dsettlement::soil
