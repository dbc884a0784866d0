#include "output/vertical.hpp"

#include "output/core/find_marks.hpp"
#include "output/tables.hpp"
#include "output/time_settlement.hpp"
#include "output/time_tables.hpp"

namespace dsettlement::output {

using host::Mapping;
using host::Ref;

namespace {

template <typename Character>
Ref build_coordinates(const State& state,
                      const std::vector<CoordinateMarks<Character>>& coordinates) {
  Mapping mapping;
  for (const auto& coordinate : coordinates) {
    mapping.put(host::call_method(python_text(coordinate.axis), state.names.lower),
                real_of(coordinate.value));
  }
  return mapping.done();
}

template <typename Character>
Ref build_stresses(const std::optional<TableMarks<Character>>& stresses) {
  if (!stresses) return Mapping().done();
  const Headers headers(stresses->headers);
  return headers.table(build_columns(stresses->rows, headers));
}

template <typename Character>
Ref build_time_settlement(const State& state,
                          const std::optional<TimeSettlementMarks<Character>>& marks) {
  Mapping mapping;
  if (!marks) return mapping.done();
  mapping.put(state.names.load_step_count, integer_of(marks->load_step_count));
  mapping.put(state.names.time_step_count, integer_of(marks->time_step_count));
  add_load_columns(mapping, state.names.time, build_common_columns(marks->rows));
  return mapping.done();
}

template <typename Character>
Ref build_vertical_data(const VerticalMarks<Character>& marks) {
  if (!marks.time_dependent_headers) return Mapping().done();
  TimeTables tables{Headers(*marks.time_dependent_headers)};
  for (const auto& block : marks.times) tables.add(real_of(block.time), block.rows);
  return tables.done();
}

template <typename Character>
Ref build_lines(const std::optional<Text<Character>>& lines) {
  return lines ? build_numbers(*lines) : Ref::steal(PyList_New(0));
}

}  // namespace

void add_load_columns(Mapping& mapping, host::Handle time, const std::vector<Ref>& columns) {
  if (columns.empty()) raise_missing_element();
  mapping.put(time, columns[0]);
  for (std::size_t i = 1; i < columns.size(); ++i) {
    mapping.put(Ref::steal(PyUnicode_FromFormat("load_%zu", i)), columns[i]);
  }
}

Ref assemble_vertical(const State& state, const VerticalParts& parts) {
  return Mapping()
      .put(state.names.coordinates, parts.coordinates)
      .put(state.names.depths, parts.depths)
      .put(state.names.leakages, parts.leakages)
      .put(state.names.drained_layers, parts.drained_layers)
      .put(state.names.stresses, parts.stresses)
      .put(state.names.time_settlement_per_load, parts.time_settlement_per_load)
      .put(state.names.vertical_data, parts.vertical_data)
      .done();
}

// The order of the steps settles which of several failures is raised: the lists of lines come last.
template <typename Character>
Ref build_vertical(const State& state, const Section<Character>& vertical) {
  VerticalMarks<Character> marks;
  find_vertical_marks(vertical, marks);
  VerticalParts parts;
  parts.coordinates = build_coordinates(state, marks.coordinates);
  parts.stresses = build_stresses(marks.stresses);
  parts.time_settlement_per_load = build_time_settlement(state, marks.time_settlement_per_load);
  parts.vertical_data = build_vertical_data(marks);
  parts.depths = build_lines(marks.depths);
  parts.leakages = build_lines(marks.leakages);
  parts.drained_layers = build_lines(marks.drained_layers);
  return assemble_vertical(state, parts);
}

template Ref build_vertical(const State&, const Section<Narrow>&);
template Ref build_vertical(const State&, const Section<Medium>&);
template Ref build_vertical(const State&, const Section<Wide>&);

}  // namespace dsettlement::output
