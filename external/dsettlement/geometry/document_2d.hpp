// The document of a two-dimensional model, in which objects become numbers.
#pragma once

#include "geometry/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::geometry {

extern const host::Operation<State> serialize_2d;
extern const host::Operation<State> serialize_points;
extern const host::Operation<State> serialize_curves;
extern const host::Operation<State> serialize_boundaries;
extern const host::Operation<State> serialize_pl_lines;
extern const host::Operation<State> serialize_layers;

}  // namespace dsettlement::geometry
