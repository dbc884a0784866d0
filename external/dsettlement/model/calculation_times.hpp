// The operation set_calculation_times.
#pragma once

#include "host/class_body.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

void add_calculation_times(host::ClassBody& body, State& state);

}  // namespace dsettlement::model
