// Reading by the matches of a pattern: for patterns that an application has put in the place of
// those that were defined, and for what is no text of Python itself. The steps are taken in the
// same order as natively, and in the time that the pattern takes.
#pragma once

#include "output/stage_two/headers.hpp"
#include "output/stage_two/time_tables.hpp"
#include "output/state.hpp"

namespace dsettlement::output {

// True if a text can be read natively: for other objects the patterns have to say what is wrong
// with them, and subclasses of `str` may answer to slicing in their own way.
[[nodiscard]] inline bool is_readable(host::Handle object) {
  return PyUnicode_CheckExact(static_cast<PyObject*>(object)) != 0;
}

// The whole first match; an empty Ref if there is none.
[[nodiscard]] host::Ref match_whole(const State& state, host::Handle pattern, host::Handle text);

// The path on the FILENAME line of a file; an empty Ref if there is none.
[[nodiscard]] host::Ref match_path(const State& state, host::Handle pattern, host::Handle file);

[[nodiscard]] host::Ref match_verticals(const State& state, host::Handle cls, host::Handle pattern,
                                        host::Handle results);
[[nodiscard]] host::Ref match_residual_settlements(const State& state, host::Handle pattern,
                                                   host::Handle results);

// The blocks of a vertical.

[[nodiscard]] host::Ref match_coordinates(const State& state, host::Handle pattern,
                                          host::Handle vertical);

// The text of a block of numbers; an empty Ref if there is none.
[[nodiscard]] host::Ref match_lines(const State& state, host::Handle pattern,
                                    host::Handle vertical);

[[nodiscard]] host::Ref match_stresses(const State& state, host::Handle pattern,
                                       host::Handle vertical);
[[nodiscard]] host::Ref match_time_settlement(const State& state, host::Handle pattern,
                                              host::Handle vertical);

// [Time-dependent Data]: its headers, and what its blocks are looked for in.
struct TimeDependentMatch {
  Headers headers;
  host::Ref data;
};

[[nodiscard]] TimeDependentMatch match_time_dependent_data(const State& state, host::Handle pattern,
                                                           host::Handle vertical);
void match_times(const State& state, host::Handle pattern, host::Handle data, TimeTables& tables);

}  // namespace dsettlement::output
