// The fast path to the numbers by which a document refers to points, curves and chains.
//
// Each function gives what the search gives: the positions of the first equal entries. Empty if the
// fast path may not be taken, or if something is not to be found, which the search then says.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

// The two point numbers of each curve, counted from 1.
[[nodiscard]] host::Ref number_curves(const State& state, host::Handle model);

// The curve numbers of each boundary and of each pl-line, counted from 1.
[[nodiscard]] host::Ref number_boundaries(const State& state, host::Handle model);
[[nodiscard]] host::Ref number_pl_lines(const State& state, host::Handle model);

// The material, boundaries and pl-lines of each layer. Boundaries are counted from 0, pl-lines from
// 1.
[[nodiscard]] host::Ref number_layers(const State& state, host::Handle model);

}  // namespace dsettlement::geometry
