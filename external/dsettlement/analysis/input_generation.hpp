// The road from a model to its input file.
#pragma once

#include "analysis/state.hpp"
#include "host/operation.hpp"

namespace dsettlement::analysis {

extern const host::Operation<State> generate_input;
extern const host::Operation<State> generate_input_file;

}  // namespace dsettlement::analysis
