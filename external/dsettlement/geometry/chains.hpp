// How point lists become boundaries and pl-lines of a two-dimensional model, and how what repeats
// is folded together.
#pragma once

#include "geometry/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

void add_chains(host::ClassBody& body, State& state);

}  // namespace dsettlement::geometry
