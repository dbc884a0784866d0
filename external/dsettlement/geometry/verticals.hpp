// The verticals of a two-dimensional model, kept in order.
#pragma once

#include "geometry/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::geometry {

extern const host::Operation<State> create_vertical;

}  // namespace dsettlement::geometry
