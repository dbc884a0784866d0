// Lines as `splitlines` makes them.
#pragma once

#include <cstddef>

#include "output/core/characters.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

// Moves over one line boundary, for which CR LF counts as one.
template <typename Character>
const Character* behind_line_boundary(const Character* place, const Character* end) noexcept {
  return place + (*place == '\r' && end - place > 1 && place[1] == '\n' ? 2 : 1);
}

// Calls visit(Text line) for each line, without its line end.
template <typename Character, typename Visit>
void for_each_line(Text<Character> text, Visit&& visit) {
  for (const Character* place = text.begin; place != text.end;) {
    const Character* const begin = place;
    while (place != text.end && !is_line_boundary(*place)) ++place;
    visit(Text<Character>{begin, place});
    if (place != text.end) place = behind_line_boundary(place, text.end);
  }
}

// The number of lines. Written without branches, so that the compiler can take many characters at
// a time.
template <typename Character>
std::size_t count_lines(Text<Character> text) noexcept {
  if (text.empty()) return 0;
  std::size_t boundaries = 0;
  std::size_t pairs = 0;
  for (const Character* c = text.begin; c != text.end; ++c) {
    const std::uint32_t character = *c;
    const bool is_wide_boundary =
        sizeof(Character) > 1 && static_cast<unsigned>((character | 1U) == 0x2029U) != 0U;
    boundaries += static_cast<unsigned>(character - '\n' < 4U) |
                  static_cast<unsigned>(character - 0x1cU < 3U) |
                  static_cast<unsigned>(character == 0x85U) |
                  static_cast<unsigned>(is_wide_boundary);
  }
  for (const Character* c = text.begin; c != text.end - 1; ++c) {
    pairs += static_cast<unsigned>(c[0] == '\r') & static_cast<unsigned>(c[1] == '\n');
  }
  return boundaries - pairs + (is_line_boundary(text.end[-1]) ? 0 : 1);
}

}  // namespace dsettlement::output
