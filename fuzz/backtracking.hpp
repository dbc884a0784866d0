// A textbook backtracking matcher for the regular expressions of the result format: the definition
// that the finders of marks are held against, and slow like any other of its kind.
//
// It knows what the patterns use: characters and escapes, `.`, `\s`, `\d`, sets, the quantifiers
// `*`, `+` and `*?` behind a single character, named groups without quantifiers, and the one
// alternative (?:\r\n|\n|\r).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "output/core/characters.hpp"
#include "output/core/text.hpp"

namespace dsettlement::fuzz {

struct Element {
  enum class Kind : std::uint8_t {
    character,
    any,
    any_but_line_feed,
    space,
    decimal,
    set,
    line_end,
    group_begin,
    group_end,
  };
  enum class Quantifier : std::uint8_t { one, at_least_one, any_number, lazily_any_number };

  Kind kind;
  Quantifier quantifier = Quantifier::one;
  char character = '\0';
  std::string_view set = {};
  std::size_t group = 0;
};

// A pattern as a sequence of elements.
class Expression {
 public:
  Expression(std::string_view pattern, bool dot_matches_all);

  [[nodiscard]] const std::vector<Element>& elements() const noexcept { return elements_; }
  [[nodiscard]] std::size_t group_count() const noexcept { return group_count_; }

 private:
  std::vector<Element> elements_;
  std::size_t group_count_ = 0;
};

// Thrown when a match takes more steps than it was given.
struct TooManySteps {};

template <typename Character>
class Matcher {
 public:
  using Text = output::Text<Character>;

  Matcher(const Expression& expression, Text text, std::size_t steps)
      : expression_(expression), text_(text), steps_(steps), groups_(expression.group_count()) {}

  // The first match that begins at `place` or behind it: the whole match, then the groups.
  std::optional<std::vector<Text>> search(const Character* place) {
    for (;; ++place) {
      if (const Character* const end = match(0, place)) {
        std::vector<Text> found{{place, end}};
        found.insert(found.end(), groups_.begin(), groups_.end());
        return found;
      }
      if (place == text_.end) return std::nullopt;
    }
  }

 private:
  // The end of the match if the elements from `index` on match at `place`, or null.
  const Character* match(std::size_t index, const Character* place) {
    if (steps_ == 0) throw TooManySteps{};
    --steps_;
    if (index == expression_.elements().size()) return place;
    const Element& element = expression_.elements()[index];
    switch (element.kind) {
      case Element::Kind::group_begin:
        return match_group(groups_[element.group].begin, index, place);
      case Element::Kind::group_end:
        return match_group(groups_[element.group].end, index, place);
      case Element::Kind::line_end:
        return match_line_end(index, place);
      default:
        return match_characters(element, index, place);
    }
  }

  const Character* match_group(const Character*& border, std::size_t index,
                               const Character* place) {
    const Character* const before = border;
    border = place;
    const Character* const end = match(index + 1, place);
    if (end == nullptr) border = before;
    return end;
  }

  const Character* match_line_end(std::size_t index, const Character* place) {
    const auto left = text_.end - place;
    if (left > 1 && place[0] == '\r' && place[1] == '\n') {
      if (const Character* const end = match(index + 1, place + 2)) return end;
    }
    if (left > 0 && (*place == '\n' || *place == '\r')) return match(index + 1, place + 1);
    return nullptr;
  }

  const Character* match_characters(const Element& element, std::size_t index,
                                    const Character* place) {
    const bool may_be_absent = element.quantifier == Element::Quantifier::any_number ||
                               element.quantifier == Element::Quantifier::lazily_any_number;
    if (!may_be_absent && !belongs(element, place)) return nullptr;
    const Character* const least = place + (may_be_absent ? 0 : 1);
    const Character* most = least;
    if (element.quantifier == Element::Quantifier::lazily_any_number) {
      for (;; ++most) {
        if (const Character* const end = match(index + 1, most)) return end;
        if (!belongs(element, most)) return nullptr;
      }
    }
    if (element.quantifier != Element::Quantifier::one) {
      while (belongs(element, most)) ++most;
    }
    for (;; --most) {
      if (const Character* const end = match(index + 1, most)) return end;
      if (most == least) return nullptr;
    }
  }

  bool belongs(const Element& element, const Character* place) const {
    if (place == text_.end) return false;
    const std::uint32_t c = *place;
    switch (element.kind) {
      case Element::Kind::any:
        return true;
      case Element::Kind::any_but_line_feed:
        return c != '\n';
      case Element::Kind::space:
        return output::is_space(c);
      case Element::Kind::decimal:
        return output::is_decimal(c);
      case Element::Kind::set:
        return c < 0x80 && element.set.find(static_cast<char>(c)) != std::string_view::npos;
      default:
        return c == static_cast<unsigned char>(element.character);
    }
  }

  const Expression& expression_;
  Text text_;
  std::size_t steps_;
  std::vector<Text> groups_;
};

}  // namespace dsettlement::fuzz
