// The parameters of an operation, as constant data: the single source for binding arguments, for
// defaults, for the signature that Python shows and for the texts of wrong calls.
#pragma once

#include <cstdint>

#include "host/ref.hpp"

namespace dsettlement::host {

// A default value, or the absence of one.
struct Default {
  enum class Kind : std::uint8_t { required, none, boolean, integer, real, text, pair_of_reals };

  Kind kind = Kind::required;
  long number = 0;
  double first = 0.0;
  double second = 0.0;
  const char* characters = nullptr;

  // The Python object; an empty Ref for a required parameter.
  [[nodiscard]] Ref object() const;

  bool operator==(const Default&) const = default;
};

enum class Passing : std::uint8_t { by_position_or_keyword, by_keyword, rest, keyword_rest };

struct Parameter {
  const char* name;
  const char* type = "";
  Default value = {};
  Passing passing = Passing::by_position_or_keyword;
};

// `self` of a method, `cls` of a class method.
inline constexpr Parameter self{"self"};
inline constexpr Parameter cls{"cls"};

inline constexpr Default no_object{.kind = Default::Kind::none};
constexpr Default flag(bool value) {
  return {.kind = Default::Kind::boolean, .number = value ? 1 : 0};
}
constexpr Default number(int value) {
  return {.kind = Default::Kind::integer, .number = value};
}
constexpr Default number(double value) {
  return {.kind = Default::Kind::real, .first = value};
}
constexpr Default characters(const char* value) {
  return {.kind = Default::Kind::text, .characters = value};
}
constexpr Default pair(double first, double second) {
  return {.kind = Default::Kind::pair_of_reals, .first = first, .second = second};
}

constexpr Parameter keyword_only(const char* name, const char* type, Default value = {}) {
  return {name, type, value, Passing::by_keyword};
}
// `*name`: all further positional arguments, as a tuple.
constexpr Parameter rest(const char* name, const char* type) {
  return {name, type, {}, Passing::rest};
}
// `**name`: all keyword arguments that no other parameter takes, as a dict.
constexpr Parameter keyword_rest(const char* name, const char* type) {
  return {name, type, {}, Passing::keyword_rest};
}

}  // namespace dsettlement::host
