// The class DSettlementAnalysis: one calculation on a worker.
#pragma once

#include "analysis/state.hpp"

namespace dsettlement::analysis {

void define_analysis_job(host::Module& module, State& state);

}  // namespace dsettlement::analysis
