// What the model frame does with its table of materials.
#pragma once

#include "host/class_body.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

// Several groups, as the order of operations in the class is part of its interface.
void add_materials(host::ClassBody& body, State& state);
void add_material_documents(host::ClassBody& body, State& state);

}  // namespace dsettlement::soil
