// The classes of characters that the result format rests on, as Python knows them.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

namespace dsettlement::output {

// The line ends of the format, of which CR followed by LF may count as one.
constexpr bool is_line_end(std::uint32_t c) noexcept {
  return c == '\n' || c == '\r';
}

// White space of `str.isspace`, and so of `\s` and of `split`.
constexpr bool is_space(std::uint32_t c) noexcept {
  if (c <= ' ') return (c >= '\t' && c <= '\r') || c >= 0x1c;
  if (c < 0x85) return false;
  return c == 0x85 || c == 0xa0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200a) || c == 0x2028 ||
         c == 0x2029 || c == 0x202f || c == 0x205f || c == 0x3000;
}

// The characters at which `splitlines` breaks; all of them are white space.
constexpr bool is_line_boundary(std::uint32_t c) noexcept {
  if (c < 0x85) return (c >= '\n' && c <= '\r') || (c >= 0x1c && c <= 0x1e);
  return c == 0x85 || c == 0x2028 || c == 0x2029;
}

constexpr bool is_ascii_digit(std::uint32_t c) noexcept {
  return c - '0' < 10;
}

namespace detail {

// The first digit of each run of ten decimal digits of Unicode 15.0 beyond ASCII.
inline constexpr std::array<std::uint32_t, 67> zeros = {
    0x660,   0x6f0,   0x7c0,   0x966,   0x9e6,   0xa66,   0xae6,   0xb66,   0xbe6,   0xc66,
    0xce6,   0xd66,   0xde6,   0xe50,   0xed0,   0xf20,   0x1040,  0x1090,  0x17e0,  0x1810,
    0x1946,  0x19d0,  0x1a80,  0x1a90,  0x1b50,  0x1bb0,  0x1c40,  0x1c50,  0xa620,  0xa8d0,
    0xa900,  0xa9d0,  0xa9f0,  0xaa50,  0xabf0,  0xff10,  0x104a0, 0x10d30, 0x11066, 0x110f0,
    0x11136, 0x111d0, 0x112f0, 0x11450, 0x114d0, 0x11650, 0x116c0, 0x11730, 0x118e0, 0x11950,
    0x11c50, 0x11d50, 0x11da0, 0x11f50, 0x16a60, 0x16ac0, 0x16b50, 0x1d7ce, 0x1d7d8, 0x1d7e2,
    0x1d7ec, 0x1d7f6, 0x1e140, 0x1e2f0, 0x1e4f0, 0x1e950, 0x1fbf0};

}  // namespace detail

// Decimal digits of any script: `\d`.
constexpr bool is_decimal(std::uint32_t c) noexcept {
  if (c < detail::zeros.front()) return is_ascii_digit(c);
  const auto* above = std::ranges::upper_bound(detail::zeros, c);
  return c - *(above - 1) < 10;
}

}  // namespace dsettlement::output
