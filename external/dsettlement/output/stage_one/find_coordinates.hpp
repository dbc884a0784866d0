// The lines that say where a vertical stands, found anywhere in its text.
//
// (.*?) SPACES = SPACES BLANK [X|Z] SPACE co-ordinate, where `.` matches everything but LF.
//
// All of the pattern behind the free text hangs on its equals sign, so the equals signs that the
// rest fits are the candidates, in the order in which they stand. For one of them let `spaces` be
// the beginning of the white space in front of it.
//
// A search from a place tries one start after the other, and from each start the text grows until
// the rest fits. Growing, it first meets the first candidate; it can get there if no LF lies
// between, and has to go no further than `spaces`, or not at all from a start within the white
// space. A start in front of an LF doesn't get there, nor to any later candidate. So the first
// start that succeeds is the one behind the last LF in front of `spaces`, or the place itself where
// there is no such LF. CR is no hindrance, so in a text with bare CR the coordinate begins at the
// place where the search does.

#pragma once

#include <optional>
#include <vector>

#include "output/core/find_character.hpp"
#include "output/stage_one/marks.hpp"
#include "output/stage_one/scanner.hpp"

namespace dsettlement::output {

namespace detail {

// The axis behind an equals sign, if the rest of the pattern fits there; `behind` is set to its
// end.
template <typename Character>
std::optional<Text<Character>> axis_behind(const Character* equals, const Character* end,
                                           const Character*& behind) {
  Scanner<Character> scanner(equals + 1, end);
  if (scanner.spaces() < 2) return std::nullopt;
  const Character* const axis = scanner.place();
  if (axis[-1] != ' ' || axis == end) return std::nullopt;
  if (*axis != 'X' && *axis != 'Z' && *axis != '|') return std::nullopt;
  scanner = Scanner<Character>(axis + 1, end);
  if (!scanner.space() || !scanner.literal("co-ordinate")) return std::nullopt;
  behind = scanner.place();
  return Text<Character>{axis, axis + 1};
}

}  // namespace detail

template <typename Character>
void find_coordinates(Text<Character> text, std::vector<CoordinateMarks<Character>>& coordinates) {
  coordinates.clear();
  const Character* place = text.begin;
  for (const Character* equals = find_character(place, text.end, '='); equals != text.end;
       equals = find_character(equals + 1, text.end, '=')) {
    const Character* behind = nullptr;
    const auto axis = detail::axis_behind(equals, text.end, behind);
    if (!axis) continue;
    const Character* spaces = equals;
    while (spaces != place && is_space(spaces[-1])) --spaces;
    if (spaces == equals) continue;
    const Character* start = spaces;
    while (start != place && start[-1] != '\n') --start;
    coordinates.push_back({.value = {start, spaces}, .axis = *axis});
    place = behind;
    equals = behind - 1;
  }
}

}  // namespace dsettlement::output
