// How layers are stacked in a two-dimensional model.
#pragma once

#include "geometry/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::geometry {

extern const host::Operation<State> create_layer;

}  // namespace dsettlement::geometry
