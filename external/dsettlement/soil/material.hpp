// The class _Material: a record of soil parameters.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

void define_material(const host::Module& module, State& state);

}  // namespace dsettlement::soil
