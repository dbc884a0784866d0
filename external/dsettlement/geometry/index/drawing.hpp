// The fast path from plain points to a boundary or a pl-line.
//
// It does what the operations of the model do one after the other, in one go. What it cannot
// finish, refusals included, it leaves to the operations, with nothing changed.
#pragma once

#include <utility>

#include "geometry/state.hpp"

namespace dsettlement::geometry {

// The boundary through the points, added to the model, or an equal one of the model. Empty if the
// fast path may not be taken.
[[nodiscard]] host::Ref draw_boundary(const State& state, host::Handle model, host::Handle points);

// The same for a pl-line, and whether the model had it.
[[nodiscard]] std::pair<host::Ref, bool> draw_pl_line(const State& state, host::Handle model,
                                                      host::Handle points);

}  // namespace dsettlement::geometry
