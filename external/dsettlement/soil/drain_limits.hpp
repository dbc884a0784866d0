// The checks that hold the vertical drains of a model against its limits and its geometry.
#pragma once

#include "host/class_body.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

void add_drain_limits(host::ClassBody& body, State& state);

}  // namespace dsettlement::soil
