// The constructor of the model frame: the calculation options with their range checks.
#pragma once

#include "host/operation.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

extern const host::Operation<State> construct;

}  // namespace dsettlement::model
