#include "output/pattern_road.hpp"

#include "output/python_text.hpp"
#include "output/residuals.hpp"
#include "output/tables.hpp"
#include "output/time_settlement.hpp"
#include "output/time_tables.hpp"
#include "output/vertical.hpp"

namespace dsettlement::output {

using host::Handle;
using host::Mapping;
using host::Name;
using host::Ref;

namespace {

// The first match of a pattern of the class; an empty Ref if there is none.
Ref search(const State& state, Handle cls, Pattern pattern, Handle text) {
  const Ref match = host::call_method(state.patterns.of(cls, pattern), state.names.search, text);
  return host::is_true(match) ? match : Ref();
}

// Calls visit(match) for all matches.
template <typename Visit>
void find_all(const State& state, Handle cls, Pattern pattern, Handle text, Visit&& visit) {
  host::for_each(host::call_method(state.patterns.of(cls, pattern), state.names.finditer, text),
                 visit);
}

Ref group(const State& state, Handle match, const Name& name) {
  return host::call_method(match, state.names.group, name);
}

Ref whole_match(const State& state, Handle match) {
  return host::call_method(match, state.names.group);
}

// Calls visit(Text) with a group that is to be split into lines. A group that took no part in the
// match is no text, and the call of `splitlines` says so.
template <typename Visit>
auto with_lines_of(const State& state, Handle match, const Name& name, Visit&& visit) {
  const Ref text = group(state, match, name);
  if (PyUnicode_Check(text.get()) == 0) {
    static_cast<void>(host::call_method(text, state.names.splitlines));
    host::raise(PyExc_TypeError, "a result text must be of type str");
  }
  return with_text_of(text, visit);
}

Headers headers_of(const State& state, Handle match) {
  return with_lines_of(state, match, state.names.headers, [](auto text) { return Headers(text); });
}

std::vector<Ref> lines_of(const State& state, Handle match, const Name& name) {
  return with_lines_of(state, match, name, [](auto text) { return split_lines(text); });
}

Ref real_of_group(const State& state, Handle match, const Name& name) {
  return Ref::steal(PyNumber_Float(group(state, match, name).get()));
}

Ref integer_of_group(const State& state, Handle match, const Name& name) {
  return host::call(reinterpret_cast<PyObject*>(&PyLong_Type), group(state, match, name));
}

Ref match_coordinates(const State& state, Handle cls, Handle vertical) {
  Mapping coordinates;
  find_all(state, cls, Pattern::coordinate, vertical, [&](const Ref& match) {
    const Ref value = real_of_group(state, match, state.names.coordinate);
    const Ref axis = host::call_method(group(state, match, state.names.axes), state.names.lower);
    coordinates.put(axis, value);
  });
  return coordinates.done();
}

Ref build_stresses(const State& state, const Ref& match) {
  if (!match) return Mapping().done();
  const Headers headers = headers_of(state, match);
  return with_lines_of(state, match, state.names.data,
                       [&](auto rows) { return headers.table(build_columns(rows, headers)); });
}

Ref build_time_settlement(const State& state, const Ref& match) {
  Mapping mapping;
  if (!match) return mapping.done();
  const State::Names& names = state.names;
  mapping.put(names.load_step_count, integer_of_group(state, match, names.load_step_count));
  mapping.put(names.time_step_count, integer_of_group(state, match, names.time_step_count));
  const std::vector<Ref> columns =
      with_lines_of(state, match, names.data, [](auto rows) { return build_common_columns(rows); });
  add_load_columns(mapping, names.time, columns);
  return mapping.done();
}

Ref build_vertical_data(const State& state, Handle cls, const Ref& match) {
  TimeTables tables{match ? headers_of(state, match) : Headers(Text<Narrow>{})};
  const Ref data = match ? group(state, match, state.names.data) : Ref::steal(PyUnicode_New(0, 0));
  find_all(state, cls, Pattern::vertical_data_at_time, data, [&](const Ref& block) {
    const Ref time = real_of_group(state, block, state.names.time);
    if (!tables.reads_rows()) return tables.add_without_rows(time);
    with_lines_of(state, block, state.names.data, [&](auto rows) { tables.add(time, rows); });
  });
  return tables.done();
}

// The lines of a block, less the first, as they are found; they are read last of all.
std::vector<Ref> number_lines_of(const State& state, const Ref& match) {
  if (!match) return {};
  return but_first(lines_of(state, match, state.names.data));
}

Ref numbers_of(const std::vector<Ref>& lines) {
  host::List numbers;
  for (const Ref& line : lines) numbers.append(Ref::steal(PyFloat_FromString(line.get())));
  return numbers.done();
}

}  // namespace

Ref search_results(const State& state, Handle cls, Handle file) {
  const Ref match = search(state, cls, Pattern::results, file);
  return match ? whole_match(state, match) : Ref();
}

Ref search_path(const State& state, Handle cls, Handle file) {
  const Ref match = search(state, cls, Pattern::file_name, file);
  return match ? group(state, match, state.names.path) : Ref();
}

Ref match_verticals(const State& state, Handle cls, Handle results) {
  Mapping verticals;
  long number = 0;
  find_all(state, cls, Pattern::vertical, results, [&](const Ref& match) {
    const Ref parse = host::get(cls, state.names.parse_vertical);
    verticals.put(host::integer(++number), host::call(parse, whole_match(state, match)));
  });
  return verticals.done();
}

Ref match_vertical(const State& state, Handle cls, Handle vertical) {
  VerticalParts parts;
  parts.coordinates = match_coordinates(state, cls, vertical);
  const auto depths = number_lines_of(state, search(state, cls, Pattern::depths, vertical));
  const auto leakages = number_lines_of(state, search(state, cls, Pattern::leakages, vertical));
  const auto drained_layers =
      number_lines_of(state, search(state, cls, Pattern::drained_layers, vertical));
  parts.stresses = build_stresses(state, search(state, cls, Pattern::stresses, vertical));
  parts.time_settlement_per_load =
      build_time_settlement(state, search(state, cls, Pattern::time_settlement_per_load, vertical));
  parts.vertical_data =
      build_vertical_data(state, cls, search(state, cls, Pattern::time_dependent_data, vertical));
  parts.depths = numbers_of(depths);
  parts.leakages = numbers_of(leakages);
  parts.drained_layers = numbers_of(drained_layers);
  return assemble_vertical(state, parts);
}

Ref match_residual_settlements(const State& state, Handle cls, Handle results) {
  const Ref match = search(state, cls, Pattern::residual_settlements, results);
  if (!match) return Mapping().done();
  const std::vector<Ref> headers = but_first(lines_of(state, match, state.names.headers));
  return with_lines_of(state, match, state.names.data,
                       [&](auto rows) { return build_residuals(headers, rows); });
}

}  // namespace dsettlement::output
