// Between the texts of the reader and those of Python.
#pragma once

#include <utility>

#include "host/ref.hpp"
#include "output/core/text.hpp"

namespace dsettlement::output {

// Calls visit(Text) with the characters of a Python text, in their width.
template <typename Visit>
auto with_text_of(host::Handle text, Visit&& visit) {
  const auto length = PyUnicode_GET_LENGTH(static_cast<PyObject*>(text));
  const auto run = [&]<typename Character>(const Character* characters) {
    return std::forward<Visit>(visit)(Text<Character>{characters, characters + length});
  };
  switch (PyUnicode_KIND(static_cast<PyObject*>(text))) {
    case PyUnicode_1BYTE_KIND:
      return run(PyUnicode_1BYTE_DATA(static_cast<PyObject*>(text)));
    case PyUnicode_2BYTE_KIND:
      return run(PyUnicode_2BYTE_DATA(static_cast<PyObject*>(text)));
    default:
      return run(PyUnicode_4BYTE_DATA(static_cast<PyObject*>(text)));
  }
}

// A stretch of a text as a Python text.
template <typename Character>
[[nodiscard]] host::Ref python_text(Text<Character> text) {
  return host::Ref::steal(PyUnicode_FromKindAndData(sizeof(Character), text.begin,
                                                    static_cast<Py_ssize_t>(text.size())));
}

// The same for a stretch that may be most of `source`, which is the text it lies in: the host knows
// what characters are in it, and need not look at them all.
template <typename Character>
[[nodiscard]] host::Ref python_text(host::Handle source, Text<Character> text) {
  const auto* const begin =
      static_cast<const Character*>(PyUnicode_DATA(static_cast<PyObject*>(source)));
  return host::Ref::steal(PyUnicode_Substring(source, text.begin - begin, text.end - begin));
}

}  // namespace dsettlement::output
