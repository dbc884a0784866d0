// The verticals of a two-dimensional model, kept in order.
#pragma once

#include "geometry/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

void add_verticals(host::ClassBody& body, State& state);

}  // namespace dsettlement::geometry
