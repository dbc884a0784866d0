// The class VerticalDrain.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

void define_vertical_drain(host::Module& module, State& state);

}  // namespace dsettlement::soil
