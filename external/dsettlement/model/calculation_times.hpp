// The operation set_calculation_times.
#pragma once

#include "host/operation.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

extern const host::Operation<State> set_calculation_times;

}  // namespace dsettlement::model
