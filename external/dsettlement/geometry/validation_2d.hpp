// The checks of a finished two-dimensional model and the levels between which drains must lie.
#pragma once

#include "geometry/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

void add_validation(host::ClassBody& body, State& state);

}  // namespace dsettlement::geometry
