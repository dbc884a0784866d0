// The public enumerations CalculationModel and ConsolidationModel.
#pragma once

#include "model/state.hpp"

namespace dsettlement::model {

void define_enumerations(host::Module& module, State& state);

}  // namespace dsettlement::model
