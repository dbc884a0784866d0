// The checks of a finished two-dimensional model and the levels between which drains must lie.
#pragma once

#include "geometry/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::geometry {

extern const host::Operation<State> validate_2d;
extern const host::Operation<State> min_vertical_drains_2d;
extern const host::Operation<State> max_vertical_drains_2d;

}  // namespace dsettlement::geometry
