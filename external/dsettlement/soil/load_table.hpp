// What the model frame does with its tables of loads.
#pragma once

#include "host/operation.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

extern const host::Operation<State> create_uniform_load;
extern const host::Operation<State> add_other_load;
extern const host::Operation<State> serialize_other_loads;
extern const host::Operation<State> serialize_non_uniform_loads;

}  // namespace dsettlement::soil
