// The blocks that have named columns, and the blocks of [Time-dependent Data].
#pragma once

#include <optional>
#include <vector>

#include "output/stage_one/lazy_text.hpp"
#include "output/stage_one/marks.hpp"

namespace dsettlement::output {

namespace detail {

// OPENING LINE_END [Column Indication] LINE_END (.*?) LINE_END [End of Column Indication] REST
//
// `rest(behind, rows)` looks at what follows the headers, and fills in the rows.
template <typename Character, typename Rest>
std::optional<TableMarks<Character>> find_table(const Section<Character>& section, Tag opening,
                                                Rest rest) {
  TableMarks<Character> table;
  const auto whole = [&](const Character* /*tag*/, Scanner<Character> scanner) {
    if (!scanner.line_end() || !scanner.literal("[Column Indication]")) return Verdict::next_tag;
    const auto behind_headers = [&](Text<Character> text, Scanner<Character> behind) {
      table.headers = text;
      return rest(behind, table.rows);
    };
    return match_lazily(section, scanner.text_starts(), Tag::end_of_column_indication,
                        behind_headers);
  };
  return match_first(section, opening, whole) ? std::optional(table) : std::nullopt;
}

// SPACES? DIGITS SPACES = SPACES Depth step count
template <typename Character>
bool skip_step_count(Scanner<Character>& scanner) {
  scanner.spaces();
  return scanner.ascii_digits() > 0 && scanner.equals_sign() && scanner.literal("Depth step count");
}

// SPACES? (DECIMALS . DECIMALS) SPACES = SPACES Time SPACE in SPACE days; the numeral, or nothing.
template <typename Character>
std::optional<Text<Character>> time_of(Scanner<Character>& scanner) {
  scanner.spaces();
  const Character* const digits = scanner.place();
  if (scanner.decimals() == 0 || !scanner.literal(".") || scanner.decimals() == 0) {
    return std::nullopt;
  }
  const Text<Character> time{digits, scanner.place()};
  const bool fits = scanner.equals_sign() && scanner.literal("Time") && scanner.space() &&
                    scanner.literal("in") && scanner.space() && scanner.literal("days");
  return fits ? std::optional(time) : std::nullopt;
}

}  // namespace detail

// ... LINE_END [Stress Data] LINE_END SPACES? DIGITS SPACES = SPACES Depth step count
// LINE_END (.*?) LINE_END [End of Stress Data] LINE_END [End of Stresses]
template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_stresses(
    const Section<Character>& section) {
  const auto rest = [&](Scanner<Character> scanner, Text<Character>& rows) {
    if (!scanner.line_end() || !scanner.literal("[Stress Data]") || !scanner.line_end() ||
        !detail::skip_step_count(scanner)) {
      return Verdict::next_tag;
    }
    const auto behind_rows = [&](Text<Character> text, Scanner<Character> behind) {
      if (!behind.line_end() || !behind.literal("[End of Stresses]")) return Verdict::next_tag;
      rows = text;
      return Verdict::match;
    };
    return match_lazily(section, scanner.text_starts(), Tag::end_of_stress_data, behind_rows);
  };
  return detail::find_table(section, Tag::stresses, rest);
}

// The headers of [Time-dependent Data], and as `rows` the text that holds its blocks.
//
// ... LINE_END (.*?) LINE_END [End of Time dependent Data]
template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_time_dependent_data(
    const Section<Character>& section) {
  const auto rest = [&](Scanner<Character> scanner, Text<Character>& rows) {
    return match_lazily(section, scanner.text_starts(), Tag::end_of_time_dependent_data, rows);
  };
  return detail::find_table(section, Tag::time_dependent_data, rest);
}

// ... LINE_END [DATA COUNT] LINE_END .*? LINE_END [END OF DATA COUNT] LINE_END
// [RESIDUAL SETTLEMENT DATA] LINE_END (.*?) LINE_END [END OF RESIDUAL SETTLEMENT DATA]
template <typename Character>
[[nodiscard]] std::optional<TableMarks<Character>> find_residual_settlements(
    const Section<Character>& section) {
  const auto rest = [&](Scanner<Character> scanner, Text<Character>& rows) {
    if (!scanner.line_end() || !scanner.literal("[DATA COUNT]")) return Verdict::next_tag;
    const auto behind_count = [&](Text<Character> /*count*/, Scanner<Character> behind) {
      if (!behind.line_end() || !behind.literal("[RESIDUAL SETTLEMENT DATA]")) {
        return Verdict::next_tag;
      }
      return match_lazily(section, behind.text_starts(), Tag::end_of_residual_settlement_data,
                          rows);
    };
    return match_lazily(section, scanner.text_starts(), Tag::end_of_data_count, behind_count);
  };
  return detail::find_table(section, Tag::residual_settlements, rest);
}

// All [Vertical Data at Time] blocks of a section.
//
// OPENING LINE_END SPACES? (DECIMALS . DECIMALS) SPACES = SPACES Time SPACE in SPACE days
// LINE_END (.*?) LINE_END CLOSING, over and over.
template <typename Character>
void find_times(const Section<Character>& section, std::vector<TimeMarks<Character>>& times) {
  times.clear();
  Text<Character> left = section.text();
  const auto block = [&](const Character* /*tag*/, Scanner<Character> scanner) {
    if (!scanner.line_end()) return Verdict::next_tag;
    const auto time = detail::time_of(scanner);
    if (!time) return Verdict::next_tag;
    const auto behind_rows = [&](Text<Character> rows, Scanner<Character> behind) {
      times.push_back({.time = *time, .rows = rows});
      left.begin = behind.place();
      return Verdict::match;
    };
    return match_lazily(section, scanner.text_starts(), Tag::end_of_vertical_data_at_time,
                        behind_rows);
  };
  while (match_first(section.part(left), Tag::vertical_data_at_time, block)) {
  }
}

}  // namespace dsettlement::output
