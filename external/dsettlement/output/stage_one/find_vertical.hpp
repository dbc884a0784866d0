// One [Vertical] block, and the blocks of lines in it.
#pragma once

#include <optional>

#include "output/stage_one/lazy_text.hpp"

namespace dsettlement::output {

// The first [Vertical] block of a section, tags included. To find them all, look on behind the end
// of each.
//
// OPENING LINE_END (.*?) LINE_END CLOSING
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_vertical(const Section<Character>& section) {
  Text<Character> vertical;
  const auto whole = [&](const Character* tag, Scanner<Character> scanner) {
    const auto behind_text = [&](Text<Character>, Scanner<Character> behind) {
      vertical = {tag, behind.place()};
      return Verdict::match;
    };
    return match_lazily(section, scanner.text_starts(), Tag::end_of_vertical, behind_text);
  };
  return match_first(section, Tag::vertical, whole) ? std::optional(vertical) : std::nullopt;
}

// The text between the two tags of a block of lines, with a line end behind the second.
//
// OPENING LINE_END (.*?) LINE_END CLOSING LINE_END
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_lines(const Section<Character>& section,
                                                        const LineBlock& block) {
  Text<Character> lines;
  const auto between = [&](const Character* /*tag*/, Scanner<Character> scanner) {
    const auto behind_text = [&](Text<Character> text, Scanner<Character> behind) {
      if (!behind.line_end()) return Verdict::next_tag;
      lines = text;
      return Verdict::match;
    };
    return match_lazily(section, scanner.text_starts(), block.closing, behind_text);
  };
  return match_first(section, block.opening, between) ? std::optional(lines) : std::nullopt;
}

}  // namespace dsettlement::output
