// The mapping of one vertical.
#pragma once

#include "output/core/tags.hpp"
#include "output/state.hpp"

namespace dsettlement::output {

// Reads a [Vertical] block that lies in `source`, with the patterns of a class.
template <typename Character>
[[nodiscard]] host::Ref read_vertical(const State& state, host::Handle cls, host::Handle source,
                                      const Section<Character>& vertical);

// Reads what `_parse_vertical` is given, which may be anything.
[[nodiscard]] host::Ref read_vertical(const State& state, host::Handle cls, host::Handle vertical);

}  // namespace dsettlement::output
