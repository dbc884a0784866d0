#include "backtracking.hpp"

#include <stdexcept>

namespace dsettlement::fuzz {

namespace {

constexpr std::string_view line_end = R"((?:\r\n|\n|\r))";
constexpr std::string_view group = "(?P<";
constexpr std::string_view ascii_digits = "[0-9]";

Element escaped(char c) {
  switch (c) {
    case 's':
      return {.kind = Element::Kind::space};
    case 'd':
      return {.kind = Element::Kind::decimal};
    case 'r':
      return {.kind = Element::Kind::character, .character = '\r'};
    case 'n':
      return {.kind = Element::Kind::character, .character = '\n'};
    default:
      return {.kind = Element::Kind::character, .character = c};
  }
}

// Takes a quantifier off the front of a pattern.
Element::Quantifier take_quantifier(std::string_view& pattern) {
  for (const auto& [text, quantifier] :
       {std::pair{std::string_view("*?"), Element::Quantifier::lazily_any_number},
        std::pair{std::string_view("*"), Element::Quantifier::any_number},
        std::pair{std::string_view("+"), Element::Quantifier::at_least_one}}) {
    if (!pattern.starts_with(text)) continue;
    pattern.remove_prefix(text.size());
    return quantifier;
  }
  return Element::Quantifier::one;
}

// Takes a single character, or what stands for one, off the front of a pattern.
Element take_character(std::string_view& pattern, bool dot_matches_all) {
  const char first = pattern.front();
  if (first == '\\') {
    const Element element = escaped(pattern.at(1));
    pattern.remove_prefix(2);
    return element;
  }
  if (first == '[') {
    const std::size_t end = pattern.find(']');
    const bool is_range = pattern.starts_with(ascii_digits);
    const std::string_view set = is_range ? "0123456789" : pattern.substr(1, end - 1);
    pattern.remove_prefix(end + 1);
    return {.kind = Element::Kind::set, .set = set};
  }
  pattern.remove_prefix(1);
  if (first == '.') {
    return {.kind = dot_matches_all ? Element::Kind::any : Element::Kind::any_but_line_feed};
  }
  if (std::string_view("(){}|?*+^$").find(first) != std::string_view::npos) {
    throw std::invalid_argument("a pattern uses what the matcher doesn't know");
  }
  return {.kind = Element::Kind::character, .character = first};
}

}  // namespace

Expression::Expression(std::string_view pattern, bool dot_matches_all) {
  while (!pattern.empty()) {
    if (pattern.starts_with(line_end)) {
      elements_.push_back({.kind = Element::Kind::line_end});
      pattern.remove_prefix(line_end.size());
    } else if (pattern.starts_with(group)) {
      elements_.push_back({.kind = Element::Kind::group_begin, .group = group_count_++});
      pattern.remove_prefix(pattern.find('>') + 1);
    } else if (pattern.starts_with(')')) {
      // Groups don't nest in these patterns.
      elements_.push_back({.kind = Element::Kind::group_end, .group = group_count_ - 1});
      pattern.remove_prefix(1);
    } else {
      Element element = take_character(pattern, dot_matches_all);
      element.quantifier = take_quantifier(pattern);
      elements_.push_back(element);
    }
  }
}

}  // namespace dsettlement::fuzz
