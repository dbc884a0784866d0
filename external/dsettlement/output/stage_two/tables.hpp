// The lists that the lines of a result text turn into.
#pragma once

#include <algorithm>
#include <vector>

#include "host/containers.hpp"
#include "output/core/lines.hpp"
#include "output/stage_two/python_numbers.hpp"

namespace dsettlement::output {

// text.splitlines()
template <typename Character>
[[nodiscard]] std::vector<host::Ref> split_lines(Text<Character> text) {
  std::vector<host::Ref> lines;
  lines.reserve(count_lines(text));
  for_each_line(text, [&](Text<Character> line) { lines.push_back(python_text(line)); });
  return lines;
}

// lines[1:]
[[nodiscard]] inline std::vector<host::Ref> but_first(std::vector<host::Ref> lines) {
  if (!lines.empty()) lines.erase(lines.begin());
  return lines;
}

// [float(line) for line in text.splitlines()[1:]]: the first line says how many there are, and is
// not read.
template <typename Character>
[[nodiscard]] host::Ref build_numbers(Text<Character> text) {
  const std::size_t count = std::max<std::size_t>(count_lines(text), 1) - 1;
  host::Ref numbers = host::Ref::steal(PyList_New(static_cast<Py_ssize_t>(count)));
  Py_ssize_t index = -1;
  for_each_line(text, [&](Text<Character> line) {
    if (index >= 0) PyList_SET_ITEM(numbers.get(), index, real_of(line).release());
    ++index;
  });
  return numbers;
}

}  // namespace dsettlement::output
