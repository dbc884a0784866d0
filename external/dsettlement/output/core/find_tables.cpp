// The blocks that have named columns, and the blocks of [Time-dependent Data].

#include "output/core/find_marks.hpp"
#include "output/core/lazy_text.hpp"

namespace dsettlement::output {

namespace {

template <typename Character>
using Found = std::optional<TableMarks<Character>>;

// OPENING LINE_END [Column Indication] LINE_END (.*?) LINE_END [End of Column Indication] REST
//
// `rest` looks at what follows the headers, and fills in the rows.
template <typename Character, typename Rest>
Found<Character> find_table(const Section<Character>& section, Tag opening, Rest rest) {
  for (const TagMark& mark : section.tags()) {
    if (!mark.is(opening)) continue;
    Scanner<Character> scanner(section.place(mark) + section.length(mark), section.text().end);
    if (!scanner.line_end() || !scanner.literal("[Column Indication]")) continue;
    const auto starts = scanner.text_starts();
    if (starts.count == 0) continue;

    TableMarks<Character> table;
    const auto behind_headers = [&](Text<Character> text, Scanner<Character> behind) {
      table.headers = text;
      return rest(behind, table.rows);
    };
    if (match_lazily(section, starts, Tag::end_of_column_indication, behind_headers)) return table;
    return std::nullopt;
  }
  return std::nullopt;
}

// LINE_END (.*?) LINE_END CLOSING, as the last part of a pattern.
template <typename Character>
Verdict find_rows(const Section<Character>& section, const TextStarts<Character>& starts,
                  Tag closing, Text<Character>& rows) {
  if (starts.count == 0) return Verdict::next_tag;
  const auto rest = [&](Text<Character> text, Scanner<Character>) {
    rows = text;
    return Verdict::match;
  };
  return match_lazily(section, starts, closing, rest) ? Verdict::match : Verdict::give_up;
}

}  // namespace

// ... LINE_END [Stress Data] LINE_END SPACES? DIGITS SPACES = SPACES Depth step count
// LINE_END (.*?) LINE_END [End of Stress Data] LINE_END [End of Stresses]
template <typename Character>
Found<Character> find_stresses(const Section<Character>& section) {
  return find_table(section, Tag::stresses, [&](Scanner<Character> scanner, auto& rows) {
    if (!scanner.line_end() || !scanner.literal("[Stress Data]") || !scanner.line_end()) {
      return Verdict::next_tag;
    }
    scanner.spaces();
    if (scanner.ascii_digits() == 0 || !scanner.equals_sign() ||
        !scanner.literal("Depth step count")) {
      return Verdict::next_tag;
    }
    const auto starts = scanner.text_starts();
    if (starts.count == 0) return Verdict::next_tag;
    const auto behind_rows = [&](Text<Character> text, Scanner<Character> behind) {
      if (!behind.line_end() || !behind.literal("[End of Stresses]")) return Verdict::next_tag;
      rows = text;
      return Verdict::match;
    };
    return match_lazily(section, starts, Tag::end_of_stress_data, behind_rows) ? Verdict::match
                                                                               : Verdict::give_up;
  });
}

// ... LINE_END (.*?) LINE_END [End of Time dependent Data]
template <typename Character>
Found<Character> find_time_dependent_data(const Section<Character>& section) {
  return find_table(section, Tag::time_dependent_data, [&](Scanner<Character> scanner, auto& rows) {
    return find_rows(section, scanner.text_starts(), Tag::end_of_time_dependent_data, rows);
  });
}

// ... LINE_END [DATA COUNT] LINE_END .*? LINE_END [END OF DATA COUNT] LINE_END
// [RESIDUAL SETTLEMENT DATA] LINE_END (.*?) LINE_END [END OF RESIDUAL SETTLEMENT DATA]
template <typename Character>
Found<Character> find_residual_settlements(const Section<Character>& section) {
  return find_table(section, Tag::residual_settlements,
                    [&](Scanner<Character> scanner, auto& rows) {
                      if (!scanner.line_end() || !scanner.literal("[DATA COUNT]"))
                        return Verdict::next_tag;
                      const auto starts = scanner.text_starts();
                      if (starts.count == 0) return Verdict::next_tag;
                      const auto behind_count = [&](Text<Character>, Scanner<Character> behind) {
                        if (!behind.line_end() || !behind.literal("[RESIDUAL SETTLEMENT DATA]")) {
                          return Verdict::next_tag;
                        }
                        return find_rows(section, behind.text_starts(),
                                         Tag::end_of_residual_settlement_data, rows);
                      };
                      return match_lazily(section, starts, Tag::end_of_data_count, behind_count)
                                 ? Verdict::match
                                 : Verdict::give_up;
                    });
}

// OPENING LINE_END SPACES? (DECIMALS . DECIMALS) SPACES = SPACES Time SPACE in SPACE days
// LINE_END (.*?) LINE_END CLOSING, over and over.
template <typename Character>
void find_times(const Section<Character>& section, std::vector<TimeMarks<Character>>& times) {
  times.clear();
  const Character* place = section.text().begin;
  for (const TagMark& mark : section.tags()) {
    const Character* const tag = section.place(mark);
    if (tag < place || !mark.is(Tag::vertical_data_at_time)) continue;
    Scanner<Character> scanner(tag + section.length(mark), section.text().end);
    if (!scanner.line_end()) continue;
    scanner.spaces();
    const Character* const digits = scanner.place();
    if (scanner.decimals() == 0 || !scanner.literal(".") || scanner.decimals() == 0) continue;
    const Text<Character> time{digits, scanner.place()};
    if (!scanner.equals_sign() || !scanner.literal("Time") || !scanner.space() ||
        !scanner.literal("in") || !scanner.space() || !scanner.literal("days")) {
      continue;
    }
    const auto starts = scanner.text_starts();
    if (starts.count == 0) continue;

    const auto rest = [&](Text<Character> rows, Scanner<Character> behind) {
      times.push_back({.time = time, .rows = rows});
      place = behind.place();
      return Verdict::match;
    };
    if (!match_lazily(section, starts, Tag::end_of_vertical_data_at_time, rest)) return;
  }
}

template Found<Narrow> find_stresses(const Section<Narrow>&);
template Found<Medium> find_stresses(const Section<Medium>&);
template Found<Wide> find_stresses(const Section<Wide>&);
template Found<Narrow> find_time_dependent_data(const Section<Narrow>&);
template Found<Medium> find_time_dependent_data(const Section<Medium>&);
template Found<Wide> find_time_dependent_data(const Section<Wide>&);
template Found<Narrow> find_residual_settlements(const Section<Narrow>&);
template Found<Medium> find_residual_settlements(const Section<Medium>&);
template Found<Wide> find_residual_settlements(const Section<Wide>&);
template void find_times(const Section<Narrow>&, std::vector<TimeMarks<Narrow>>&);
template void find_times(const Section<Medium>&, std::vector<TimeMarks<Medium>>&);
template void find_times(const Section<Wide>&, std::vector<TimeMarks<Wide>>&);

}  // namespace dsettlement::output
