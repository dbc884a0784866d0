// The document of a vertical drain.
#pragma once

#include "host/class_body.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

void add_drain_document(host::ClassBody& body, State& state);

}  // namespace dsettlement::soil
