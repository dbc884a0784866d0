// The constructor of the model frame: the calculation options with their range checks.
#pragma once

#include "host/class_body.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

void add_calculation_options(host::ClassBody& body, State& state);

}  // namespace dsettlement::model
