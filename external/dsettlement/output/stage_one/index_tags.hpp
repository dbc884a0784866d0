// Where the tags of a text stand.
#pragma once

#include <vector>

#include "output/core/find_character.hpp"
#include "output/stage_one/scanner.hpp"
#include "output/stage_one/tags.hpp"

namespace dsettlement::output {

namespace detail {

// The place of the character that tells most of a tag: the first of its name, or the first behind
// "End of ".
inline constexpr std::size_t first_of_name = 1;
inline constexpr std::size_t first_of_ended_name = 8;

constexpr std::size_t telling_place(auto second) {
  return second == 'E' ? first_of_ended_name : first_of_name;
}

inline constexpr auto telling_characters = [] {
  std::array<char, tag_names.size()> characters{};
  for (std::size_t i = 0; i < tag_names.size(); ++i) {
    characters[i] = tag_names[i][telling_place(tag_names[i][first_of_name])];
  }
  return characters;
}();

inline constexpr std::size_t shortest_tag = name_of(Tag::depths).size();
static_assert(std::ranges::all_of(tag_names, [](auto name) {
  return name.size() >= shortest_tag &&
         (name[first_of_name] != 'E' || name.size() > first_of_ended_name);
}));

// Makes room for one more mark. The marks so far tell how dense they stand, which lets one step
// reach the end of an even text.
inline void make_room(std::vector<TagMark>& marks, std::size_t offset, std::size_t text_size) {
  constexpr std::size_t few = 512;
  const std::size_t count = marks.size();
  if (count < marks.capacity()) return;
  const std::size_t expected = count * (text_size / (offset + 1) + 1);
  const std::size_t most = text_size / shortest_tag + 1;
  marks.reserve(std::min(std::max({few, 2 * count, expected}), most));
}

}  // namespace detail

// All tags of a text in the order in which they stand, found in one pass.
template <typename Character>
[[nodiscard]] std::vector<TagMark> index_tags(Text<Character> text) {
  std::vector<TagMark> marks;
  for (const Character* at = find_character(text.begin, text.end, '['); at != text.end;
       at = find_character(at + 1, text.end, '[')) {
    const auto left = static_cast<std::size_t>(text.end - at);
    if (left < detail::shortest_tag) break;
    const std::size_t place = detail::telling_place(at[detail::first_of_name]);
    if (left <= place) continue;
    for (std::size_t tag = 0; tag < tag_names.size(); ++tag) {
      if (static_cast<Character>(detail::telling_characters[tag]) != at[place]) continue;
      if (!Scanner<Character>(at, text.end).literal(tag_names[tag])) continue;
      const auto offset = static_cast<std::size_t>(at - text.begin);
      detail::make_room(marks, offset, text.size());
      marks.push_back({.offset = offset, .tag = tag & 63});
      break;
    }
  }
  return marks;
}

// The first place of a literal that begins with "[", or null.
template <typename Character>
[[nodiscard]] const Character* find_tag(Text<Character> text, std::string_view name) {
  for (const Character* at = find_character(text.begin, text.end, '['); at != text.end;
       at = find_character(at + 1, text.end, '[')) {
    if (Scanner<Character>(at, text.end).literal(name)) return at;
  }
  return nullptr;
}

}  // namespace dsettlement::output
