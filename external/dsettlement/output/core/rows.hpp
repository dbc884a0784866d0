// Rows of numbers: lines of fields, as `splitlines` and `split` make them, read in one go.
#pragma once

#include "output/core/characters.hpp"
#include "output/core/lines.hpp"
#include "output/core/numbers.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

enum class Field : std::uint8_t {
  number,  // a number that could be read here
  other,   // something else, for the host to read or to refuse
  none,    // the row has no further field
};

template <typename Character>
class RowReader {
 public:
  explicit RowReader(Text<Character> rows) noexcept : place_(rows.begin), end_(rows.end) {}

  // True while there is a row at which to read. An empty line is a row without fields.
  [[nodiscard]] bool has_row() const noexcept { return place_ != end_; }

  // The next field of the row, as `number` or as `text`.
  Field next(double& number, Text<Character>& text) {
    while (place_ != end_ && *place_ == ' ') ++place_;
    const Character* const behind = read_short_decimal(place_, end_, number);
    if (behind != nullptr && (behind == end_ || *behind == ' ' || is_line_end(*behind)))
        [[likely]] {
      place_ = behind;
      return Field::number;
    }
    return next_of_any_kind(number, text);
  }

  // The next field of the row as text; false if there is none.
  bool next_text(Text<Character>& text) noexcept {
    while (place_ != end_ && is_space(*place_) && !is_line_boundary(*place_)) ++place_;
    if (place_ == end_ || is_line_boundary(*place_)) return false;
    text.begin = place_;
    while (place_ != end_ && !is_space(*place_)) ++place_;
    text.end = place_;
    return true;
  }

  // Leaves what is left of the row and goes to the next one.
  void end_row() noexcept {
    while (place_ != end_ && !is_line_boundary(*place_)) ++place_;
    if (place_ != end_) place_ = behind_line_boundary(place_, end_);
  }

 private:
  [[gnu::noinline]] Field next_of_any_kind(double& number, Text<Character>& text) {
    if (!next_text(text)) return Field::none;
    const auto read = read_real(text);
    if (!read) return Field::other;
    number = *read;
    return Field::number;
  }

  const Character* place_;
  const Character* end_;
};

}  // namespace dsettlement::output
