// The straight road from plain points to a boundary or a pl-line.
//
// It does what the operations of the model do one after the other, in one go. It is open as long as
// nobody can tell the difference: all points are plain, the registers hold, and neither the model
// nor a class has an operation of an application on the way. What it cannot finish, refusals
// included, it leaves to the operations, with nothing changed.
#pragma once

#include <utility>

#include "geometry/state.hpp"

namespace dsettlement::geometry {

// The boundary through the points, registered in the model, or an equal one of the model. Empty if
// the straight road is closed.
[[nodiscard]] host::Ref draw_boundary(State& state, host::Handle model, host::Handle points);

// The same for a pl-line, and whether the model had it.
[[nodiscard]] std::pair<host::Ref, bool> draw_pl_line(State& state, host::Handle model,
                                                      host::Handle points);

}  // namespace dsettlement::geometry
