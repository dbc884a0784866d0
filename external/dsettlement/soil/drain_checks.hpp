// The checks that a vertical drain makes on its own values, before any model is known.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

// Between which bounds the values lie: sizes in [m], times in [days], pressures in [kPa],
// water heads in [m].
inline constexpr double least_size = 0.001;
inline constexpr long largest_size = 1000;
inline constexpr long largest_time = 100000;
inline constexpr long largest_underpressure = 100000;
inline constexpr long largest_tube_pressure = 10000;
inline constexpr long largest_water_head = 100000;

struct DrainValues {
  host::Handle drain_type;
  host::Handle center_to_center;
  host::Handle width_diameter;
  host::Handle thickness;
  host::Handle position_drain;
  host::Handle grid;
  host::Handle start_of_drainage;
  host::Handle phreatic_level_in_drain;
  host::Handle schedule;
};

// Raises ModelError for the first value that doesn't fit the others or its range.
void check_drain(const State& state, const DrainValues& drain);

}  // namespace dsettlement::soil
