// The public class OutputFileParser.
#pragma once

#include "output/state.hpp"

namespace dsettlement::output {

void define_parser(host::Module& module, State& state);

}  // namespace dsettlement::output
