// The patterns that define the format, as texts of Python's regular expressions.
//
// They are the definition: the finders of marks give what these patterns give, and are held against
// them by tests and fuzzing.
#pragma once

#include <algorithm>
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

// What a pattern is looked for in.
enum class LookedIn : std::uint8_t { file, results, vertical };

struct PatternDefinition {
  Pattern pattern;
  const char* name;  // of the class attribute
  LookedIn looked_in;
  const char* text;
  bool dot_matches_all = true;
};

#define LINE_END R"((?:\r\n|\n|\r))"

inline constexpr auto pattern_definitions = std::to_array<PatternDefinition>({
    {Pattern::file_name, "_FILE_NAME_PATTERN", LookedIn::file,
     R"(FILENAME\s+: (?P<path>.*))" LINE_END, false},
    {Pattern::results, "_RESULTS_PATTERN", LookedIn::file,
     R"(\[Results\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Results\])"},
    {Pattern::vertical, "_VERTICAL_PATTERN", LookedIn::results,
     R"(\[Vertical\])" LINE_END R"((?P<results>.*?))" LINE_END R"(\[End of Vertical\])"},
    {Pattern::coordinate, "_COORDINATE_PATTERN", LookedIn::vertical,
     R"((?P<coordinate>.*?)\s+=\s+ (?P<axes>[X|Z])\sco-ordinate)", false},
    {Pattern::time_settlement_per_load, "_TIME_SETTLEMENT_PER_LOAD_PATTERN", LookedIn::vertical,
     R"(\[Time-Settlement per Load\])" LINE_END
     R"(\s*(?P<time_step_count>\d+)\s+=\s+Time\sstep\scount\s*)" LINE_END
     R"(\s*(?P<load_step_count>\d+)\s+=\s+Load\sstep\scount\s*)" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time-Settlement per Load\])"},
    {Pattern::depths, "_DEPTHS_PATTERN", LookedIn::vertical,
     R"(\[Depths\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Depths\])" LINE_END},
    {Pattern::leakages, "_LEAKAGES_PATTERN", LookedIn::vertical,
     R"(\[Leakages\])" LINE_END R"((?P<data>.*?))" LINE_END R"(\[End of Leakages\])" LINE_END},
    {Pattern::drained_layers, "_DRAINED_LAYERS_PATTERN", LookedIn::vertical,
     R"(\[Drained Layers\])" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[End of Drained Layers\])" LINE_END},
    {Pattern::stresses, "_STRESSES_PATTERN", LookedIn::vertical,
     R"(\[Stresses\])" LINE_END R"(\[Column Indication\])" LINE_END R"((?P<headers>.*?))" LINE_END
     R"(\[End of Column Indication\])" LINE_END R"(\[Stress Data\])" LINE_END
     R"(\s*[0-9]+\s+=\s+Depth step count)" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[End of Stress Data\])" LINE_END R"(\[End of Stresses\])"},
    {Pattern::time_dependent_data, "_TIME_DEPENDENT_DATA_PATTERN", LookedIn::vertical,
     R"(\[Time-dependent Data\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"((?P<data>.*?))" LINE_END R"(\[End of Time dependent Data\])"},
    {Pattern::vertical_data_at_time, "_VERTICAL_DATA_AT_TIME", LookedIn::vertical,
     R"(\[Vertical Data at Time\])" LINE_END
     R"(\s*(?P<time>\d+\.\d+)\s+=\s+Time\sin\sdays)" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[End of Vertical Data at Time\])"},
    {Pattern::residual_settlements, "_RESIDUAL_SETTLEMENTS_PATTERN", LookedIn::results,
     R"(\[RESIDUAL SETTLEMENTS\])" LINE_END R"(\[Column Indication\])" LINE_END
     R"((?P<headers>.*?))" LINE_END R"(\[End of Column Indication\])" LINE_END
     R"(\[DATA COUNT\])" LINE_END R"(.*?)" LINE_END R"(\[END OF DATA COUNT\])" LINE_END
     R"(\[RESIDUAL SETTLEMENT DATA\])" LINE_END R"((?P<data>.*?))" LINE_END
     R"(\[END OF RESIDUAL SETTLEMENT DATA\])"},
});

#undef LINE_END

inline constexpr std::size_t pattern_count = pattern_definitions.size();

constexpr const PatternDefinition& definition_of(Pattern pattern) noexcept {
  return pattern_definitions[static_cast<std::size_t>(pattern)];
}

static_assert(std::ranges::all_of(pattern_definitions, [](const PatternDefinition& definition) {
  return &definition_of(definition.pattern) == &definition;
}));

}  // namespace dsettlement::output
