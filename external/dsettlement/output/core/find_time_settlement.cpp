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

#include "output/core/find_marks.hpp"
#include "output/core/lazy_text.hpp"

namespace dsettlement::output {

namespace {

template <typename Character>
using Found = std::optional<TimeSettlementMarks<Character>>;

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

// The rows behind a run of white space, or nothing for want of a closing tag.
template <typename Character>
std::optional<Text<Character>> find_rows(const Section<Character>& section, Text<Character> spaces,
                                         const Character* last) {
  Text<Character> rows;
  const auto rest = [&](Text<Character> text, Scanner<Character>) {
    rows = text;
    return Verdict::match;
  };
  TextStarts<Character> starts;
  starts.add(last + 1);
  if (match_lazily(section, starts, Tag::end_of_time_settlement_per_load, rest)) return rows;

  const bool closed_at_once =
      last + 1 == spaces.end && Scanner<Character>(spaces.end, section.text().end)
                                    .literal(name_of(Tag::end_of_time_settlement_per_load));
  if (!closed_at_once) return std::nullopt;
  const Character* const before = last_line_end(Text<Character>{spaces.begin, last});
  if (before == nullptr) return std::nullopt;
  return Text<Character>{before + 1, last};
}

}  // namespace

template <typename Character>
Found<Character> find_time_settlement_per_load(const Section<Character>& section) {
  for (const TagMark& mark : section.tags()) {
    if (!mark.is(Tag::time_settlement_per_load)) continue;
    Scanner<Character> scanner(section.place(mark) + section.length(mark), section.text().end);
    if (!scanner.line_end()) continue;
    scanner.spaces();
    const auto time_steps = count_of(scanner, "Time");
    if (!time_steps || last_line_end(take_spaces(scanner)) == nullptr) continue;
    const auto load_steps = count_of(scanner, "Load");
    if (!load_steps) continue;
    const Text<Character> spaces = take_spaces(scanner);
    const Character* const last = last_line_end(spaces);
    if (last == nullptr) continue;

    const auto rows = find_rows(section, spaces, last);
    if (!rows) return std::nullopt;  // A later opening tag only sees less of the text.
    return TimeSettlementMarks<Character>{*time_steps, *load_steps, *rows};
  }
  return std::nullopt;
}

template Found<Narrow> find_time_settlement_per_load(const Section<Narrow>&);
template Found<Medium> find_time_settlement_per_load(const Section<Medium>&);
template Found<Wide> find_time_settlement_per_load(const Section<Wide>&);

}  // namespace dsettlement::output
