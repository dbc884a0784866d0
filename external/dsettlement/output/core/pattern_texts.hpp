// The patterns that define the format, as texts of Python's regular expressions.
//
// They are the definition: the finders of marks give what these patterns give, and are held against
// them by tests and fuzzing.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace dsettlement::output {

enum class Pattern : std::uint8_t {
  file_name,
  results,
  vertical,
  coordinate,
  time_settlement_per_load,
  depths,
  leakages,
  drained_layers,
  stresses,
  time_dependent_data,
  vertical_data_at_time,
  residual_settlements,
};

inline constexpr std::size_t pattern_count = 12;

struct PatternDefinition {
  const char* name;  // of the class attribute
  const char* text;
  bool dot_matches_all = true;
};

#define LINE_END R"((?:\r\n|\n|\r))"

inline constexpr std::array<PatternDefinition, pattern_count> pattern_definitions = {{
    {"_FILE_NAME_PATTERN", R"(FILENAME\s+: (?P<path>.*))" LINE_END, false},
    {"_RESULTS_PATTERN",
     R"(\[Results\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Results\])"},
    {"_VERTICAL_PATTERN",
     R"(\[Vertical\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Vertical\])"},
    {"_COORDINATE_PATTERN", R"((?P<coordinate>.*?)\s+=\s+ (?P<axes>[X|Z])\sco-ordinate)", false},
    {"_TIME_SETTLEMENT_PER_LOAD_PATTERN",
     R"(\[Time-Settlement per Load\])" LINE_END
     R"(\s*(?P<time_step_count>\d+)\s+=\s+Time\sstep\scount\s*)" LINE_END
     R"(\s*(?P<load_step_count>\d+)\s+=\s+Load\sstep\scount\s*)" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time-Settlement per Load\])"},
    {"_DEPTHS_PATTERN",
     R"(\[Depths\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Depths\])" LINE_END},
    {"_LEAKAGES_PATTERN",
     R"(\[Leakages\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Leakages\])" LINE_END},
    {"_DRAINED_LAYERS_PATTERN", R"(\[Drained Layers\])" LINE_END R"((?P<data>.*?))" LINE_END
                                R"(\[End of Drained Layers\])" LINE_END},
    {"_STRESSES_PATTERN",
     R"(\[Stresses\])" LINE_END R"(\[Column Indication\])" LINE_END R"((?P<headers>.*?))" LINE_END
     R"(\[End of Column Indication\])" LINE_END R"(\[Stress Data\])" LINE_END
     R"(\s*[0-9]+\s+=\s+Depth step count)" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[End of Stress Data\])" LINE_END R"(\[End of Stresses\])"},
    {"_TIME_DEPENDENT_DATA_PATTERN",
     R"(\[Time-dependent Data\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time dependent Data\])"},
    {"_VERTICAL_DATA_AT_TIME", R"(\[Vertical Data at Time\])" LINE_END
                               R"(\s*(?P<time>\d+\.\d+)\s+=\s+Time\sin\sdays)" LINE_END
                               R"((?P<data>.*?))" LINE_END R"(\[End of Vertical Data at Time\])"},
    {"_RESIDUAL_SETTLEMENTS_PATTERN",
     R"(\[RESIDUAL SETTLEMENTS\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"(\[DATA COUNT\])" LINE_END R"(.*?)" LINE_END R"(\[END OF DATA COUNT\])" LINE_END
     R"(\[RESIDUAL SETTLEMENT DATA\])" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[END OF RESIDUAL SETTLEMENT DATA\])"},
}};

#undef LINE_END

}  // namespace dsettlement::output
