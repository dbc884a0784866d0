// Reads a text from left to right, one element of a pattern at a time.
//
// Each step moves on and answers true, or answers false; after a false the scanner is spent. The
// steps take as much as they can and never give anything back. That is exact wherever the element
// that follows can't begin with what the step takes: digits after white space, a tag after a line
// end. The one place where giving back matters, a line end in front of a free text, has a step of
// its own, `text_starts`.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "output/core/characters.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

// The places where a free text may begin, in the order in which they are to be tried.
template <typename Character>
struct TextStarts {
  std::array<const Character*, 2> places{};
  std::size_t count = 0;

  void add(const Character* place) noexcept { places[count++] = place; }
  [[nodiscard]] auto begin() const noexcept { return places.begin(); }
  [[nodiscard]] auto end() const noexcept { return places.begin() + count; }
};

template <typename Character>
class Scanner {
 public:
  Scanner(const Character* place, const Character* end) noexcept : place_(place), end_(end) {}

  [[nodiscard]] const Character* place() const noexcept { return place_; }

  bool literal(std::string_view characters) noexcept {
    if (static_cast<std::size_t>(end_ - place_) < characters.size()) return false;
    for (const char c : characters) {
      if (*place_++ != static_cast<unsigned char>(c)) return false;
    }
    return true;
  }

  // One line end: CR LF, LF or CR. Only for a place where no line end can follow.
  bool line_end() noexcept {
    if (place_ == end_ || !is_line_end(*place_)) return false;
    place_ += *place_ == '\r' && end_ - place_ > 1 && place_[1] == '\n' ? 2 : 1;
    return true;
  }

  bool space() noexcept {
    if (place_ == end_ || !is_space(*place_)) return false;
    ++place_;
    return true;
  }

  // Any run of white space; the number of characters that were taken.
  std::size_t spaces() noexcept {
    return take([](auto c) { return is_space(c); });
  }

  std::size_t ascii_digits() noexcept {
    return take([](auto c) { return is_ascii_digit(c); });
  }

  std::size_t decimals() noexcept {
    return take([](auto c) { return is_decimal(c); });
  }

  // White space, an equals sign, white space.
  bool equals_sign() noexcept { return spaces() > 0 && literal("=") && spaces() > 0; }

  // The starts of a free text behind a line end. A CR LF may count as one line end, or as a CR
  // alone with the LF as the first character of the text. None if there is no line end here.
  [[nodiscard]] TextStarts<Character> text_starts() const noexcept {
    TextStarts<Character> starts;
    if (place_ == end_ || !is_line_end(*place_)) return starts;
    if (*place_ == '\r' && end_ - place_ > 1 && place_[1] == '\n') starts.add(place_ + 2);
    starts.add(place_ + 1);
    return starts;
  }

 private:
  template <typename Belongs>
  std::size_t take(Belongs belongs) noexcept {
    const Character* const start = place_;
    while (place_ != end_ && belongs(*place_)) ++place_;
    return static_cast<std::size_t>(place_ - start);
  }

  const Character* place_;
  const Character* end_;
};

}  // namespace dsettlement::output
