// The way from a model to its input file.
#pragma once

#include "analysis/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::analysis {

void add_input_generation(host::ClassBody& body, State& state);

}  // namespace dsettlement::analysis
