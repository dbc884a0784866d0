// The first stage of the reader: finds the marks, exactly where the patterns of the format find
// them when a backtracking engine runs them, in a time that grows linearly with the text.
//
// The parts of a [Vertical] block are each looked for by itself in the whole block, so parts may
// overlap.
#pragma once

#include "output/stage_one/find_coordinates.hpp"
#include "output/stage_one/find_results.hpp"
#include "output/stage_one/find_tables.hpp"
#include "output/stage_one/find_time_settlement.hpp"
#include "output/stage_one/find_vertical.hpp"
#include "output/stage_one/index_tags.hpp"
