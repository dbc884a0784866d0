// DrainType, DrainGrid and DrainageSimpleMode: what a vertical drain is described with.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

void define_drain_schedule(host::Module& module, State& state);

}  // namespace dsettlement::soil
