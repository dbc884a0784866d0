// Objects that can be looked up by their numbers instead of being compared one by one.
//
// An object is plain if comparing it runs nothing but this module's own operations on plain
// numbers: it is of the very class of this module and not of a subclass, the class is as it was
// made, and each coordinate is a float of a size that can be calculated with, or an integer
// for which such a float does as well. For plain objects equality is equality of their keys.
#pragma once

#include <optional>

#include "geometry/index/key.hpp"
#include "geometry/state.hpp"

namespace dsettlement::geometry {

// The number that a plain coordinate is; nothing for any other object.
[[nodiscard]] std::optional<double> plain_number(host::Handle coordinate);

// The same for a field of an object whose class has no say in how it is read.
[[nodiscard]] std::optional<double> plain_field(host::Handle object, host::Handle name);

// The keys of plain objects; nothing for any other object. Not to be asked unless the classes are
// as made (geometry/index/trust). A chain is plain if it has nothing but a list of plain curves.
[[nodiscard]] std::optional<PointKey> key_of_point(const State& state, host::Handle point);
[[nodiscard]] std::optional<CurveKey> key_of_curve(const State& state, host::Handle curve);
[[nodiscard]] std::optional<ChainKey> key_of_chain(const State& state, host::Handle chain);

// The list of curves of a chain that has nothing else; empty for any other object. The curves need
// not be plain.
[[nodiscard]] host::Ref curves_of_plain_chain(const State& state, host::Handle chain);

// The x of a plain vertical; nothing for any other object.
[[nodiscard]] std::optional<double> x_of_vertical(const State& state, host::Handle vertical);

// The area between a plain chain and y = 0, to the last bit what the chain itself says.
[[nodiscard]] double area_of(const ChainKey& chain);

}  // namespace dsettlement::geometry
