// The document of a vertical drain.
#pragma once

#include "host/operation.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

extern const host::Operation<State> serialize_drain;

}  // namespace dsettlement::soil
