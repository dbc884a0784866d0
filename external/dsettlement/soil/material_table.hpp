// What the model frame does with its table of materials.
#pragma once

#include "host/operation.hpp"
#include "soil/state.hpp"

namespace dsettlement::soil {

extern const host::Operation<State> create_material;
extern const host::Operation<State> serialize_materials;

}  // namespace dsettlement::soil
