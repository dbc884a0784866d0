// The two patterns that are looked for in the whole file.
#pragma once

#include <algorithm>
#include <optional>

#include "output/core/find_character.hpp"
#include "output/stage_one/index_tags.hpp"
#include "output/stage_one/lazy_text.hpp"

namespace dsettlement::output {

namespace detail {

// The end of the closing tag of the shortest text from `start` on, or null.
template <typename Character>
const Character* find_end_of_results(const Character* start, const Character* end) {
  constexpr std::string_view closing = "[End of Results]";
  const Character* place = start;
  while (const Character* const tag = find_tag(Text<Character>{place, end}, closing)) {
    place = tag + closing.size();
    if (text_end(start, tag) != nullptr) return place;
  }
  return nullptr;
}

}  // namespace detail

// The first [Results] block of a file, tags included.
//
// OPENING LINE_END (.*?) LINE_END CLOSING. The file is not indexed for it: one pair of tags is
// found faster directly.
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_results(Text<Character> file) {
  constexpr std::string_view opening = "[Results]";
  const Character* place = file.begin;
  while (const Character* const tag = find_tag(Text<Character>{place, file.end}, opening)) {
    place = tag + opening.size();
    const auto starts = Scanner<Character>(place, file.end).text_starts();
    if (starts.count == 0) continue;
    for (const Character* const start : starts) {
      const Character* const end = detail::find_end_of_results(start, file.end);
      if (end != nullptr) return Text<Character>{tag, end};
    }
    return std::nullopt;  // A later opening tag only sees less of the text.
  }
  return std::nullopt;
}

// The path on the first FILENAME line of a file that has a line end behind it.
//
// FILENAME SPACES ": " (.*) LINE_END, where `.` matches everything but LF. The path first takes all
// up to the next LF, a CR in front of it included; that LF is then the line end. Without an LF it
// takes all the rest, and gives back until a CR can be the line end, which is the last CR.
template <typename Character>
[[nodiscard]] std::optional<Text<Character>> find_file_path(Text<Character> file) {
  constexpr std::string_view file_name = "FILENAME";
  const Character* place = file.begin;
  while (true) {
    place = std::search(place, file.end, file_name.begin(), file_name.end());
    if (place == file.end) return std::nullopt;
    place += file_name.size();
    Scanner<Character> scanner(place, file.end);
    if (scanner.spaces() == 0 || !scanner.literal(": ")) continue;

    const Character* const path = scanner.place();
    const Character* const line_feed = find_character(path, file.end, '\n');
    if (line_feed != file.end) return Text<Character>{path, line_feed};
    for (const Character* end = file.end; end != path; --end) {
      if (end[-1] == '\r') return Text<Character>{path, end - 1};
    }
    return std::nullopt;  // A later FILENAME only sees less of the text.
  }
}

}  // namespace dsettlement::output
