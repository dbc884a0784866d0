// How layers are stacked in a two-dimensional model.
#pragma once

#include "geometry/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

void add_layering(host::ClassBody& body, State& state);

}  // namespace dsettlement::geometry
