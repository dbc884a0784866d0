// Making points, curves and chains by the thousand.
#pragma once

#include "geometry/state.hpp"

namespace dsettlement::geometry {

// What calling the class _Point gives.
[[nodiscard]] host::Ref make_point(const State& state, host::Handle x, host::Handle y);

// A curve of the class as made, between different points that are in order.
[[nodiscard]] host::Ref make_plain_curve(const State& state, host::Handle p1, host::Handle p2);

// A chain of the class as made, of curves that are connected.
[[nodiscard]] host::Ref make_plain_chain(const State& state, const host::Global& type,
                                         host::Handle curves);

}  // namespace dsettlement::geometry
