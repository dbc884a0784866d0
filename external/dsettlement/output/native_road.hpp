// Reading by the native marks, for classes that have the patterns they were made with.
#pragma once

#include "output/state.hpp"

namespace dsettlement::output {

// True if a text can be read natively: for other objects the patterns have to say what is wrong
// with them, and subclasses of `str` may answer to slicing in their own way.
[[nodiscard]] inline bool is_plain_text(host::Handle object) {
  return PyUnicode_CheckExact(static_cast<PyObject*>(object)) != 0;
}

// The [Results] block of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref find_results_text(host::Handle file);

// The path on the FILENAME line of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref find_path_text(host::Handle file);

[[nodiscard]] host::Ref read_vertical(const State& state, host::Handle vertical);

// The mappings of all verticals. While `_parse_vertical` of the class, or one of its patterns, is
// another than the one it was made with, each vertical goes through that operation.
[[nodiscard]] host::Ref read_verticals(const State& state, host::Handle cls, host::Handle results);

[[nodiscard]] host::Ref read_residual_settlements(host::Handle results);

}  // namespace dsettlement::output
