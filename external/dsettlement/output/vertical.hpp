// The mapping of one vertical, built from the marks of its block.
#pragma once

#include "output/core/tags.hpp"
#include "output/state.hpp"

namespace dsettlement::output {

// The parts of the mapping, each new for every vertical.
struct VerticalParts {
  host::Ref coordinates;
  host::Ref depths;
  host::Ref leakages;
  host::Ref drained_layers;
  host::Ref stresses;
  host::Ref time_settlement_per_load;
  host::Ref vertical_data;
};

// Puts the parts together in the order in which they are shown.
[[nodiscard]] host::Ref assemble_vertical(const State& state, const VerticalParts& parts);

// Reads a [Vertical] block whose marks the original patterns define.
template <typename Character>
[[nodiscard]] host::Ref build_vertical(const State& state, const Section<Character>& vertical);

}  // namespace dsettlement::output
