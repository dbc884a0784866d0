// Reading by the patterns themselves, for classes in which other patterns stand than those that
// they were made with, and for what is no plain text. It takes the steps in the same order as the
// native road, and runs in the time that the patterns take.
#pragma once

#include "output/state.hpp"

namespace dsettlement::output {

// The [Results] block of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref search_results(const State& state, host::Handle cls, host::Handle file);

// The path on the FILENAME line of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref search_path(const State& state, host::Handle cls, host::Handle file);

[[nodiscard]] host::Ref match_verticals(const State& state, host::Handle cls, host::Handle results);
[[nodiscard]] host::Ref match_vertical(const State& state, host::Handle cls, host::Handle vertical);
[[nodiscard]] host::Ref match_residual_settlements(const State& state, host::Handle cls,
                                                   host::Handle results);

}  // namespace dsettlement::output
