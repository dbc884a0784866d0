#include "output/core/numbers.hpp"

#include "output/core/scanner.hpp"

namespace dsettlement::output {

namespace {

constexpr std::size_t most_characters = 512;

// True for the numerals that std::from_chars and Python's `float` read alike.
template <typename Character>
bool is_plain_numeral(Text<Character> text) noexcept {
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

std::optional<double> convert(const char* begin, const char* end) noexcept {
  double value = 0.0;
  const auto result = std::from_chars(begin, end, value);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

}  // namespace

template <typename Character>
std::optional<double> read_real(Text<Character> text) {
  if (text.size() > most_characters) return std::nullopt;
  double value = 0.0;
  if (read_short_decimal(text.begin, text.end, value) == text.end) return value;
  if (!is_plain_numeral(text)) return std::nullopt;
  if constexpr (sizeof(Character) == 1) {
    return convert(reinterpret_cast<const char*>(text.begin),
                   reinterpret_cast<const char*>(text.end));
  } else {
    std::string ascii;
    ascii.reserve(text.size());
    for (const Character* c = text.begin; c != text.end; ++c) ascii += static_cast<char>(*c);
    return convert(ascii.data(), ascii.data() + ascii.size());
  }
}

template std::optional<double> read_real(Text<Narrow>);
template std::optional<double> read_real(Text<Medium>);
template std::optional<double> read_real(Text<Wide>);

}  // namespace dsettlement::output
