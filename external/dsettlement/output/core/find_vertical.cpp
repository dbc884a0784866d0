// One [Vertical] block, and the blocks of lines in it.

#include "output/core/find_marks.hpp"
#include "output/core/lazy_text.hpp"

namespace dsettlement::output {

// OPENING LINE_END (.*?) LINE_END CLOSING
template <typename Character>
std::optional<Text<Character>> find_vertical(const Section<Character>& section) {
  for (const TagMark& mark : section.tags()) {
    if (!mark.is(Tag::vertical)) continue;
    const Character* const tag = section.place(mark);
    const auto starts =
        Scanner<Character>(tag + section.length(mark), section.text().end).text_starts();
    if (starts.count == 0) continue;

    Text<Character> vertical{tag, nullptr};
    const auto rest = [&](Text<Character>, Scanner<Character> behind) {
      vertical.end = behind.place();
      return Verdict::match;
    };
    if (match_lazily(section, starts, Tag::end_of_vertical, rest)) return vertical;
    return std::nullopt;
  }
  return std::nullopt;
}

// OPENING LINE_END (.*?) LINE_END CLOSING LINE_END
template <typename Character>
std::optional<Text<Character>> find_lines(const Section<Character>& section, Tag opening,
                                          Tag closing) {
  for (const TagMark& mark : section.tags()) {
    if (!mark.is(opening)) continue;
    const auto starts =
        Scanner<Character>(section.place(mark) + section.length(mark), section.text().end)
            .text_starts();
    if (starts.count == 0) continue;

    Text<Character> lines;
    const auto rest = [&](Text<Character> text, Scanner<Character> behind) {
      if (!behind.line_end()) return Verdict::next_tag;
      lines = text;
      return Verdict::match;
    };
    if (match_lazily(section, starts, closing, rest)) return lines;
    return std::nullopt;
  }
  return std::nullopt;
}

template std::optional<Text<Narrow>> find_vertical(const Section<Narrow>&);
template std::optional<Text<Medium>> find_vertical(const Section<Medium>&);
template std::optional<Text<Wide>> find_vertical(const Section<Wide>&);
template std::optional<Text<Narrow>> find_lines(const Section<Narrow>&, Tag, Tag);
template std::optional<Text<Medium>> find_lines(const Section<Medium>&, Tag, Tag);
template std::optional<Text<Wide>> find_lines(const Section<Wide>&, Tag, Tag);

}  // namespace dsettlement::output
