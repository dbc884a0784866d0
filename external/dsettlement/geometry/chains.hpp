// How point lists become boundaries and pl-lines of a two-dimensional model, and how what repeats
// is folded together.
#pragma once

#include "geometry/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::geometry {

extern const host::Operation<State> curves_of_model;
extern const host::Operation<State> create_curves;
extern const host::Operation<State> create_curve;
extern const host::Operation<State> create_boundary;
extern const host::Operation<State> create_pl_line;

}  // namespace dsettlement::geometry
