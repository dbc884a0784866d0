// Numbers of a result text as Python objects, and the failures to read them, in the host's words.
#pragma once

#include "host/object.hpp"
#include "output/core/numbers.hpp"
#include "output/stage_two/python_text.hpp"

namespace dsettlement::output {

// float(text), asked of the host.
template <typename Character>
[[nodiscard]] host::Ref real_by_host(Text<Character> text) {
  return host::Ref::steal(PyFloat_FromString(python_text(text).get()));
}

// float(text)
template <typename Character>
[[nodiscard]] host::Ref real_of(Text<Character> text) {
  Text<Character> numeral = text;
  while (!numeral.empty() && *numeral.begin == ' ') ++numeral.begin;
  while (!numeral.empty() && numeral.end[-1] == ' ') --numeral.end;
  const auto number = read_real(numeral);
  return number ? host::real(*number) : real_by_host(text);
}

// int(text)
template <typename Character>
[[nodiscard]] host::Ref integer_of(Text<Character> text) {
  const auto number = read_integer(text);
  if (number) return host::Ref::steal(PyLong_FromLongLong(*number));
  return host::Ref::steal(PyLong_FromUnicodeObject(python_text(text).get(), 10));
}

// Raises what a list raises when it is asked for an element that it doesn't have.
[[noreturn]] inline void raise_missing_element() {
  static_cast<void>(host::item(host::Ref::steal(PyList_New(0)), Py_ssize_t{0}));
  throw host::ErrorSet{};
}

}  // namespace dsettlement::output
