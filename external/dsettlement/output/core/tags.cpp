#include "output/core/tags.hpp"

#include "output/core/find_character.hpp"
#include "output/core/scanner.hpp"

namespace dsettlement::output {

namespace {

// The place of the character that tells most of a tag: the first of its name, or the first behind
// "End of ".
constexpr std::size_t first_of_name = 1;
constexpr std::size_t first_of_ended_name = 8;

constexpr std::size_t telling_place(auto second) {
  return second == 'E' ? first_of_ended_name : first_of_name;
}

constexpr auto telling_characters = [] {
  std::array<char, tag_names.size()> characters{};
  for (std::size_t i = 0; i < tag_names.size(); ++i) {
    characters[i] = tag_names[i][telling_place(tag_names[i][first_of_name])];
  }
  return characters;
}();

constexpr std::size_t shortest_tag = name_of(Tag::depths).size();
static_assert(std::ranges::all_of(tag_names, [](auto name) {
  return name.size() >= shortest_tag &&
         (name[first_of_name] != 'E' || name.size() > first_of_ended_name);
}));

// Makes room for one more mark. The marks so far tell how dense they stand, which lets one step
// reach the end of an even text.
void make_room(std::vector<TagMark>& marks, std::size_t offset, std::size_t text_size) {
  constexpr std::size_t few = 512;
  const std::size_t count = marks.size();
  if (count < marks.capacity()) return;
  const std::size_t expected = count * (text_size / (offset + 1) + 1);
  const std::size_t most = text_size / shortest_tag + 1;
  marks.reserve(std::min(std::max({few, 2 * count, expected}), most));
}

}  // namespace

template <typename Character>
std::vector<TagMark> index_tags(Text<Character> text) {
  std::vector<TagMark> marks;
  for (const Character* at = find_character(text.begin, text.end, '['); at != text.end;
       at = find_character(at + 1, text.end, '[')) {
    const auto left = static_cast<std::size_t>(text.end - at);
    if (left < shortest_tag) break;
    const std::size_t place = telling_place(at[first_of_name]);
    if (left <= place) continue;
    for (std::size_t tag = 0; tag < tag_names.size(); ++tag) {
      if (static_cast<Character>(telling_characters[tag]) != at[place]) continue;
      if (!Scanner<Character>(at, text.end).literal(tag_names[tag])) continue;
      const auto offset = static_cast<std::size_t>(at - text.begin);
      make_room(marks, offset, text.size());
      marks.push_back({.offset = offset, .tag = tag & 63});
      break;
    }
  }
  return marks;
}

template <typename Character>
const Character* find_tag(Text<Character> text, std::string_view name) {
  for (const Character* at = find_character(text.begin, text.end, '['); at != text.end;
       at = find_character(at + 1, text.end, '[')) {
    if (Scanner<Character>(at, text.end).literal(name)) return at;
  }
  return nullptr;
}

template std::vector<TagMark> index_tags(Text<Narrow>);
template std::vector<TagMark> index_tags(Text<Medium>);
template std::vector<TagMark> index_tags(Text<Wide>);
template const Narrow* find_tag(Text<Narrow>, std::string_view);
template const Medium* find_tag(Text<Medium>, std::string_view);
template const Wide* find_tag(Text<Wide>, std::string_view);

}  // namespace dsettlement::output
