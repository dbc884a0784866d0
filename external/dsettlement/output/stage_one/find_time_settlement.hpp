// The block [Time-Settlement per Load].
//
// OPENING LINE_END
// SPACES? (DECIMALS) SPACES = SPACES Time SPACE step SPACE count SPACES? LINE_END
// SPACES? (DECIMALS) SPACES = SPACES Load SPACE step SPACE count SPACES? LINE_END
// (.*?) LINE_END CLOSING
//
// Between "count" and the second number stands one run of white space with at least one line end in
// it, however the pattern divides it. Behind the second "count" it matters how: SPACES? takes the
// whole run of white space and gives back until a line end follows, so the rows begin behind the
// last line end of the run, if a closing tag suits that; else behind the one before it, and so on.
//
// An earlier start than the last sees only one more candidate than the last does: a closing tag
// that follows the run at once, whose line end the last start has used up. So if the last start
// fails, and the closing tag stands there, the start behind the line end before it matches, with a
// text that runs from there up to the last line end. (Of a CR LF at the end of the run, the CR
// serves as the line end before: then the text is empty.)

#pragma once

#include <optional>

#include "output/stage_one/lazy_text.hpp"
#include "output/stage_one/marks.hpp"

namespace dsettlement::output {

namespace detail {

// DECIMALS SPACES = SPACES WORD SPACE step SPACE count; the digits, or nothing.
template <typename Character>
std::optional<Text<Character>> count_of(Scanner<Character>& scanner, std::string_view word) {
  const Character* const digits = scanner.place();
  if (scanner.decimals() == 0) return std::nullopt;
  const Text<Character> count{digits, scanner.place()};
  const bool fits = scanner.equals_sign() && scanner.literal(word) && scanner.space() &&
                    scanner.literal("step") && scanner.space() && scanner.literal("count");
  return fits ? std::optional(count) : std::nullopt;
}

// The last line end character in a text, or null.
template <typename Character>
const Character* last_line_end(Text<Character> text) {
  for (const Character* place = text.end; place != text.begin; --place) {
    if (is_line_end(place[-1])) return place - 1;
  }
  return nullptr;
}

template <typename Character>
Text<Character> take_spaces(Scanner<Character>& scanner) {
  const Character* const begin = scanner.place();
  scanner.spaces();
  return {begin, scanner.place()};
}

// The rows behind a run of white space whose last line end is at `last`.
template <typename Character>
Verdict match_rows(const Section<Character>& section, Text<Character> spaces, const Character* last,
                   Text<Character>& rows) {
  TextStarts<Character> starts;
  starts.add(last + 1);
  const Verdict verdict = match_lazily(section, starts, Tag::end_of_time_settlement_per_load, rows);
  if (verdict == Verdict::match) return verdict;

  const bool closed_at_once =
      last + 1 == spaces.end && Scanner<Character>(spaces.end, section.text().end)
                                    .literal(name_of(Tag::end_of_time_settlement_per_load));
  if (!closed_at_once) return verdict;
  const Character* const before = last_line_end(Text<Character>{spaces.begin, last});
  if (before == nullptr) return verdict;
  rows = {before + 1, last};
  return Verdict::match;
}

}  // namespace detail

template <typename Character>
[[nodiscard]] std::optional<TimeSettlementMarks<Character>> find_time_settlement_per_load(
    const Section<Character>& section) {
  TimeSettlementMarks<Character> marks;
  const auto whole = [&](const Character* /*tag*/, Scanner<Character> scanner) {
    if (!scanner.line_end()) return Verdict::next_tag;
    scanner.spaces();
    const auto time_steps = detail::count_of(scanner, "Time");
    if (!time_steps || detail::last_line_end(detail::take_spaces(scanner)) == nullptr) {
      return Verdict::next_tag;
    }
    const auto load_steps = detail::count_of(scanner, "Load");
    if (!load_steps) return Verdict::next_tag;
    const Text<Character> spaces = detail::take_spaces(scanner);
    const Character* const last = detail::last_line_end(spaces);
    if (last == nullptr) return Verdict::next_tag;
    marks = {*time_steps, *load_steps, {}};
    return detail::match_rows(section, spaces, last, marks.rows);
  };
  const bool is_found = match_first(section, Tag::time_settlement_per_load, whole);
  return is_found ? std::optional(marks) : std::nullopt;
}

}  // namespace dsettlement::output
