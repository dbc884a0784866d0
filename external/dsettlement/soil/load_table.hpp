// What the model frame does with its tables of loads.
#pragma once

#include "host/class_body.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

// Several groups, as the order of operations in the class is part of its interface.
void add_uniform_loads(host::ClassBody& body, State& state);
void add_other_loads(host::ClassBody& body, State& state);
void add_load_documents(host::ClassBody& body, State& state);

}  // namespace dsettlement::soil
