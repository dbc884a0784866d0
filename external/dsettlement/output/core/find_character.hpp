// The next place of one ASCII character.
#pragma once

#include <algorithm>
#include <cstring>

#include "output/core/text.hpp"

namespace dsettlement::output {

// `end` if the character does not occur.
template <typename Character>
[[nodiscard]] const Character* find_character(const Character* begin, const Character* end,
                                              char character) noexcept {
  if constexpr (sizeof(Character) == 1) {
    if (begin == end) return end;
    const void* found = std::memchr(begin, character, static_cast<std::size_t>(end - begin));
    return found == nullptr ? end : static_cast<const Character*>(found);
  } else {
    return std::find(begin, end, static_cast<Character>(character));
  }
}

}  // namespace dsettlement::output
