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

namespace detail {

// 1 for a character that ends a line, else 0; the LF of a CR LF counts, its CR doesn't. Without
// branches, and in the width of the characters.
template <typename Character>
constexpr Character ends_line(Character c, Character next) noexcept {
  const auto truth = [](bool value) { return static_cast<Character>(value); };
  Character boundary = truth(c >= '\n') & truth(c <= '\r');
  boundary |= truth(c >= 0x1c) & truth(c <= 0x1e);
  boundary |= truth(c == 0x85);
  if constexpr (sizeof(Character) > 1) boundary |= truth((c | 1U) == 0x2029U);
  return boundary & static_cast<Character>(1U ^ (truth(c == '\r') & truth(next == '\n')));
}

}  // namespace detail

// The number of lines. It sums in blocks that are small enough for a sum in the width of the
// characters, so that the compiler can take many of them at a time.
template <typename Character>
std::size_t count_lines(Text<Character> text) noexcept {
  constexpr std::ptrdiff_t block = 128;
  if (text.empty()) return 0;
  const Character* const last = text.end - 1;
  std::size_t count = is_line_boundary(*last) ? 0 : 1;
  const Character* place = text.begin;
  for (; last - place >= block; place += block) {
    Character sum = 0;
    for (std::ptrdiff_t i = 0; i < block; ++i) {
      sum = static_cast<Character>(sum + detail::ends_line(place[i], place[i + 1]));
    }
    count += sum;
  }
  for (; place != last; ++place) count += detail::ends_line(place[0], place[1]);
  return count + detail::ends_line(*last, Character{0});
}

}  // namespace dsettlement::output
