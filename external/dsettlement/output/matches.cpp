#include "output/matches.hpp"

#include "host/elements.hpp"
#include "output/stage_two/python_text.hpp"
#include "output/stage_two/residuals.hpp"
#include "output/stage_two/tables.hpp"
#include "output/stage_two/time_settlement.hpp"

namespace dsettlement::output {

using host::Handle;
using host::Mapping;
using host::Name;
using host::Ref;

namespace {

// The first match of a pattern; an empty Ref if there is none.
Ref search(const State& state, Handle pattern, Handle text) {
  const Ref match = host::call_method(pattern, state.names.search, text);
  return host::is_true(match) ? match : Ref();
}

host::Elements all_matches(const State& state, Handle pattern, Handle text) {
  return host::Elements(host::call_method(pattern, state.names.finditer, text));
}

Ref group(const State& state, Handle match, const Name& name) {
  return host::call_method(match, state.names.group, name);
}

Ref whole_match(const State& state, Handle match) {
  return host::call_method(match, state.names.group);
}

// A group that is to be split into lines. One that took no part in the match is no text, and the
// call of `splitlines` says so.
Ref lines_group(const State& state, Handle match, const Name& name) {
  Ref text = group(state, match, name);
  if (PyUnicode_Check(text.get()) != 0) return text;
  static_cast<void>(host::call_method(text, state.names.splitlines));
  host::raise(PyExc_TypeError, "a result text must be of type str");
}

// Calls visit(Text) with such a group.
template <typename Visit>
auto with_lines_of(const State& state, Handle match, const Name& name, Visit&& visit) {
  return with_text_of(lines_group(state, match, name), visit);
}

Headers headers_of(const State& state, Handle match) {
  return with_lines_of(state, match, state.names.headers, [](auto text) { return Headers(text); });
}

Ref real_of_group(const State& state, Handle match, const Name& name) {
  return Ref::steal(PyNumber_Float(group(state, match, name).get()));
}

Ref integer_of_group(const State& state, Handle match, const Name& name) {
  return host::call(reinterpret_cast<PyObject*>(&PyLong_Type), group(state, match, name));
}

}  // namespace

Ref match_whole(const State& state, Handle pattern, Handle text) {
  const Ref match = search(state, pattern, text);
  return match ? whole_match(state, match) : Ref();
}

Ref match_path(const State& state, Handle pattern, Handle file) {
  const Ref match = search(state, pattern, file);
  return match ? group(state, match, state.names.path) : Ref();
}

Ref match_verticals(const State& state, Handle cls, Handle pattern, Handle results) {
  Mapping verticals;
  long number = 0;
  for (const Ref& match : all_matches(state, pattern, results)) {
    const Ref parse = host::get(cls, state.names.private_parse_vertical);
    verticals.put(host::integer(++number), host::call(parse, whole_match(state, match)));
  }
  return verticals.done();
}

Ref match_residual_settlements(const State& state, Handle pattern, Handle results) {
  const Ref match = search(state, pattern, results);
  if (!match) return Mapping().done();
  const std::vector<Ref> headers = with_lines_of(
      state, match, state.names.headers, [](auto text) { return but_first(split_lines(text)); });
  return with_lines_of(state, match, state.names.data,
                       [&](auto rows) { return build_residuals(headers, rows); });
}

Ref match_coordinates(const State& state, Handle pattern, Handle vertical) {
  Mapping coordinates;
  for (const Ref& match : all_matches(state, pattern, vertical)) {
    const Ref value = real_of_group(state, match, state.names.coordinate);
    const Ref axis = host::call_method(group(state, match, state.names.axes), state.names.lower);
    coordinates.put(axis, value);
  }
  return coordinates.done();
}

Ref match_lines(const State& state, Handle pattern, Handle vertical) {
  const Ref match = search(state, pattern, vertical);
  return match ? lines_group(state, match, state.names.data) : Ref();
}

Ref match_stresses(const State& state, Handle pattern, Handle vertical) {
  const Ref match = search(state, pattern, vertical);
  if (!match) return Mapping().done();
  const Headers headers = headers_of(state, match);
  return with_lines_of(state, match, state.names.data,
                       [&](auto rows) { return headers.table(build_columns(rows, headers)); });
}

Ref match_time_settlement(const State& state, Handle pattern, Handle vertical) {
  Mapping mapping;
  const Ref match = search(state, pattern, vertical);
  if (!match) return mapping.done();
  const State::Names& names = state.names;
  mapping.put(names.load_step_count, integer_of_group(state, match, names.load_step_count));
  mapping.put(names.time_step_count, integer_of_group(state, match, names.time_step_count));
  const std::vector<Ref> columns =
      with_lines_of(state, match, names.data, [](auto rows) { return build_common_columns(rows); });
  add_load_columns(mapping, names.time, columns);
  return mapping.done();
}

TimeDependentMatch match_time_dependent_data(const State& state, Handle pattern, Handle vertical) {
  const Ref match = search(state, pattern, vertical);
  if (!match) return {Headers(Text<Narrow>{}), Ref::steal(PyUnicode_New(0, 0))};
  Headers headers = headers_of(state, match);
  return {std::move(headers), group(state, match, state.names.data)};
}

void match_times(const State& state, Handle pattern, Handle data, TimeTables& tables) {
  for (const Ref& block : all_matches(state, pattern, data)) {
    const Ref time = real_of_group(state, block, state.names.time);
    if (!tables.reads_rows()) {
      tables.add_without_rows(time);
      continue;
    }
    with_lines_of(state, block, state.names.data, [&](auto rows) { tables.add(time, rows); });
  }
}

}  // namespace dsettlement::output
