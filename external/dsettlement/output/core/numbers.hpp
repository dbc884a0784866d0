// Numerals as `float` and `int` read them, as far as they are written the common way.
//
// What stays away from here, and is left to the host, are numerals that only Python knows
// (underscores, digits of other scripts, "inf" and "nan", a leading plus), those beyond the range
// of a double or of hundreds of digits, and everything that is no numeral at all. So a refusal here
// says nothing about the text; it only says that the host has to be asked.
#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <version>

#include "output/core/characters.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

namespace detail {

// Powers of ten that a double holds exactly.
inline constexpr std::array<double, 16> powers_of_ten = {
    1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Of a numeral that is read here.
inline constexpr std::size_t most_characters = 512;

// True for the numerals that std::from_chars and Python's `float` read alike.
template <typename Character>
bool is_common_numeral(Text<Character> text) noexcept {
  const Character* place = text.begin;
  const auto take_digits = [&] {
    const Character* const first = place;
    while (place != text.end && is_ascii_digit(*place)) ++place;
    return place - first;
  };
  if (place != text.end && *place == '-') ++place;
  auto digits = take_digits();
  if (place != text.end && *place == '.') {
    ++place;
    digits += take_digits();
  }
  if (digits == 0) return false;
  if (place != text.end && (*place == 'e' || *place == 'E')) {
    ++place;
    if (place != text.end && (*place == '+' || *place == '-')) ++place;
    if (take_digits() == 0) return false;
  }
  return place == text.end;
}

// A standard library without std::from_chars for reals, such as that of macOS before 26, leaves
// these numerals to the host, too.
inline std::optional<double> convert([[maybe_unused]] const char* begin,
                                     [[maybe_unused]] const char* end) noexcept {
#ifdef __cpp_lib_to_chars
  double value = 0.0;
  const auto result = std::from_chars(begin, end, value);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
#else
  return std::nullopt;
#endif
}

}  // namespace detail

// Reads a numeral like -12.345 of at most 15 digits, and returns its end; null if there is none or
// if it is longer. With 15 digits the digits as an integer are exact, and so is the power of ten;
// their quotient is therefore the correctly rounded value.
template <typename Character>
const Character* read_short_decimal(const Character* begin, const Character* end,
                                    double& value) noexcept {
  constexpr std::ptrdiff_t most_digits = 15;
  const Character* place = begin;
  const bool is_negative = place != end && *place == '-';
  if (is_negative) ++place;
  std::uint64_t digits = 0;  // wraps in a long numeral, which is then refused
  const Character* const whole = place;
  for (; place != end && is_ascii_digit(*place); ++place) digits = digits * 10 + (*place - '0');
  std::ptrdiff_t count = place - whole;
  std::ptrdiff_t decimals = 0;
  if (place != end && *place == '.') {
    const Character* const fraction = ++place;
    for (; place != end && is_ascii_digit(*place); ++place) digits = digits * 10 + (*place - '0');
    decimals = place - fraction;
    count += decimals;
  }
  if (count == 0 || count > most_digits) return nullptr;
  value = static_cast<double>(static_cast<std::int64_t>(digits)) /
          detail::powers_of_ten[static_cast<std::size_t>(decimals)];
  if (is_negative) value = -value;
  return place;
}

// A whole text as a number: digits with at most one point and at most one exponent.
template <typename Character>
std::optional<double> read_real(Text<Character> text) {
  if (text.size() > detail::most_characters) return std::nullopt;
  double value = 0.0;
  if (read_short_decimal(text.begin, text.end, value) == text.end) return value;
  if (!detail::is_common_numeral(text)) return std::nullopt;
  if constexpr (sizeof(Character) == 1) {
    return detail::convert(reinterpret_cast<const char*>(text.begin),
                           reinterpret_cast<const char*>(text.end));
  } else {
    std::string ascii;
    ascii.reserve(text.size());
    for (const Character* c = text.begin; c != text.end; ++c) ascii += static_cast<char>(*c);
    return detail::convert(ascii.data(), ascii.data() + ascii.size());
  }
}

// A whole text as an integer of at most 18 digits.
template <typename Character>
std::optional<std::int64_t> read_integer(Text<Character> text) noexcept {
  constexpr std::size_t most_digits = 18;
  const Character* place = text.begin;
  const bool is_negative = place != text.end && *place == '-';
  if (is_negative) ++place;
  if (place == text.end || static_cast<std::size_t>(text.end - place) > most_digits) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  for (; place != text.end; ++place) {
    if (!is_ascii_digit(*place)) return std::nullopt;
    value = value * 10 + static_cast<std::int64_t>(*place - '0');
  }
  return is_negative ? -value : value;
}

}  // namespace dsettlement::output
