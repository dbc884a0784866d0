// The classes _Load, _OtherLoad and _UniformLoad.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

void define_loads(host::Module& module, State& state);

}  // namespace dsettlement::soil
