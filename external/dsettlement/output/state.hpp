// What the reader of result files works with.
#pragma once

#include <array>

#include "output/patterns.hpp"
#include "toolkit.hpp"

namespace dsettlement::output {

struct State {
  State(host::Module& module, const Toolkit& shared) : toolkit(shared), module_(module) {}

  const Toolkit& toolkit;

 private:
  host::Module& module_;

 public:
  host::Global parser{module_, "OutputFileParser"};

  // What the class was made with. As long as the same objects stand in a class, texts are read
  // natively.
  Patterns patterns{module_};
  host::Slot parse_vertical{module_};

  struct Names {
    host::Name private_results{"_results"};
    host::Name getvalue{"getvalue"};
    host::Name private_parse_results{"_parse_results"};
    host::Name private_parse_verticals{"_parse_verticals"};
    host::Name private_parse_vertical{"_parse_vertical"};
    host::Name private_parse_residual_settlements{"_parse_residual_settlements"};
    host::Name function{"__func__"};

    // Operations of patterns, matches and texts.
    host::Name search{"search"};
    host::Name finditer{"finditer"};
    host::Name group{"group"};
    host::Name lower{"lower"};
    host::Name split{"split"};
    host::Name splitlines{"splitlines"};
    host::Name backslash{"\\"};

    // Groups of the patterns.
    host::Name path{"path"};
    host::Name coordinate{"coordinate"};
    host::Name axes{"axes"};
    host::Name headers{"headers"};
    host::Name data{"data"};

    // Keys of the results, some of which are groups as well.
    host::Name coordinates{"coordinates"};
    host::Name depths{"depths"};
    host::Name leakages{"leakages"};
    host::Name drained_layers{"drained_layers"};
    host::Name stresses{"stresses"};
    host::Name time_settlement_per_load{"time_settlement_per_load"};
    host::Name vertical_data{"vertical_data"};
    host::Name load_step_count{"load_step_count"};
    host::Name time_step_count{"time_step_count"};
    host::Name time{"time"};
  } names;
};

}  // namespace dsettlement::output
