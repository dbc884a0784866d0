// The class Metadata: the identification block of an input file.
#pragma once

#include "analysis/state.hpp"

namespace dsettlement::analysis {

void define_metadata(host::Module& module, State& state);

}  // namespace dsettlement::analysis
