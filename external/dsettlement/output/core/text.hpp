// A stretch of a text that somebody else owns.
#pragma once

#include <cstddef>
#include <cstdint>

namespace dsettlement::output {

// The widths in which Python stores the characters of a text: one, two or four bytes each. Every
// code unit is a whole character, lone surrogates included.
using Narrow = std::uint8_t;
using Medium = std::uint16_t;
using Wide = std::uint32_t;

template <typename Character>
struct Text {
  const Character* begin = nullptr;
  const Character* end = nullptr;

  [[nodiscard]] std::size_t size() const noexcept { return static_cast<std::size_t>(end - begin); }
  [[nodiscard]] bool empty() const noexcept { return begin == end; }
};

}  // namespace dsettlement::output
