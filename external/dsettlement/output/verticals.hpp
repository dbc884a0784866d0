// The mappings of the verticals of a file, read with the patterns of a class.
#pragma once

#include "output/state.hpp"

namespace dsettlement::output {

// Reads what `_parse_verticals` is given. Where `_parse_vertical` of the class is another than the
// one it was made with, each vertical goes through that operation.
[[nodiscard]] host::Ref read_verticals(const State& state, host::Handle cls, host::Handle results);

// Reads what `_parse_vertical` is given. Both may be given anything.
[[nodiscard]] host::Ref read_vertical(const State& state, host::Handle cls, host::Handle vertical);

}  // namespace dsettlement::output
