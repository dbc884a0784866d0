// A result text made of the bytes of a fuzzer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "output/core/text.hpp"

namespace dsettlement::fuzz {

// Calls visit(Text) with the bytes behind the first as a text, in the width of characters that the
// first byte says: "2" or "4" bytes, else one. In the wider texts, bytes beyond ASCII stand for
// characters that mean something to the format.
template <typename Visit>
void with_text_of(const std::uint8_t* data, std::size_t size, Visit visit) {
  static constexpr std::array<std::uint32_t, 16> wide = {
      0x85,  0xa0,   0x2028, 0x2029, 0x3000, 0x1680, 0x200b,  0x663,
      0x665, 0xff11, 0xd800, 0x130,  0x15b,  0x203d, 0x1d7d9, 0x1d800};
  if (size == 0) return;
  const auto run = [&]<typename Character>(Character /*width*/) {
    std::vector<Character> characters;
    characters.reserve(size);  // an empty text has a place as well
    for (std::size_t i = 1; i < size; ++i) {
      const bool is_wide = sizeof(Character) > 1 && data[i] >= 0x80;
      characters.push_back(static_cast<Character>(is_wide ? wide[data[i] % 16U] : data[i]));
    }
    visit(output::Text<Character>{characters.data(), characters.data() + characters.size()});
  };
  if (data[0] == '2') return run(output::Medium{});
  if (data[0] == '4') return run(output::Wide{});
  run(output::Narrow{});
}

}  // namespace dsettlement::fuzz
