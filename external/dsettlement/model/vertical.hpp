// The class _Vertical: a position along x for which results are reported.
#pragma once

#include "model/state.hpp"

namespace dsettlement::model {

void define_vertical(host::Module& module, State& state);

}  // namespace dsettlement::model
