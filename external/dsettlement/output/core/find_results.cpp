// The two patterns that are looked for in the whole file.

#include <algorithm>

#include "output/core/find_character.hpp"
#include "output/core/find_marks.hpp"
#include "output/core/lazy_text.hpp"

namespace dsettlement::output {

namespace {

constexpr std::string_view opening = "[Results]";
constexpr std::string_view closing = "[End of Results]";
constexpr std::string_view file_name = "FILENAME";

// The end of the closing tag of the shortest text from `start` on, or null.
template <typename Character>
const Character* find_closing(const Character* start, const Character* end) {
  const Character* place = start;
  while (const Character* const tag = find_tag(Text<Character>{place, end}, closing)) {
    place = tag + closing.size();
    if (detail::text_end(start, tag) != nullptr) return place;
  }
  return nullptr;
}

}  // namespace

// OPENING LINE_END (.*?) LINE_END CLOSING. The file is not indexed for it: one pair of tags is
// found faster directly.
template <typename Character>
std::optional<Text<Character>> find_results(Text<Character> file) {
  const Character* place = file.begin;
  while (const Character* const tag = find_tag(Text<Character>{place, file.end}, opening)) {
    place = tag + opening.size();
    const auto starts = Scanner<Character>(place, file.end).text_starts();
    if (starts.count == 0) continue;
    for (const Character* const start : starts) {
      const Character* const end = find_closing(start, file.end);
      if (end != nullptr) return Text<Character>{tag, end};
    }
    return std::nullopt;  // A later opening tag only sees less of the text.
  }
  return std::nullopt;
}

// FILENAME SPACES ": " (.*) LINE_END, where `.` matches everything but LF. The path first takes all
// up to the next LF, a CR in front of it included; that LF is then the line end. Without an LF it
// takes all the rest, and gives back until a CR can be the line end, which is the last CR.
template <typename Character>
std::optional<Text<Character>> find_file_path(Text<Character> file) {
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

template std::optional<Text<Narrow>> find_results(Text<Narrow>);
template std::optional<Text<Medium>> find_results(Text<Medium>);
template std::optional<Text<Wide>> find_results(Text<Wide>);
template std::optional<Text<Narrow>> find_file_path(Text<Narrow>);
template std::optional<Text<Medium>> find_file_path(Text<Medium>);
template std::optional<Text<Wide>> find_file_path(Text<Wide>);

}  // namespace dsettlement::output
