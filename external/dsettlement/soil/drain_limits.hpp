// The checks that hold the vertical drains of a model against its limits and its geometry.
#pragma once

#include "host/operation.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

extern const host::Operation<State> validate;

}  // namespace dsettlement::soil
