// Reading the parts of a file, with the patterns of a class.
#pragma once

#include "output/state.hpp"

namespace dsettlement::output {

// The [Results] block of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref find_results_text(const State& state, host::Handle cls, host::Handle file);

// The path on the FILENAME line of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref find_path_text(const State& state, host::Handle cls, host::Handle file);

[[nodiscard]] host::Ref read_residual_settlements(const State& state, host::Handle cls,
                                                  host::Handle results);

}  // namespace dsettlement::output
