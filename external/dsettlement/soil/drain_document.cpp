#include "soil/drain_document.hpp"

#include "host/containers.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

// The service wants every key, whichever schedule applies; these stand where a drain has no value.
constexpr double fallback_thickness = 0.001;

Ref value_or(Handle value, double fallback) {
  return value == Py_None ? host::real(fallback) : host::share(value);
}

Ref placeholder_schedule() {
  host::List schedule;
  schedule.append(Ref::steal(Py_BuildValue("(ddd)", 0.0, 40.0, 0.0)));
  return schedule.done();
}

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  const auto attribute = [&](const host::Name& name) { return host::get(self, name); };

  const Ref schedule = attribute(names.private_schedule);
  const Ref grid = attribute(names.private_grid);
  const bool is_simple = host::is_instance(schedule, state.drainage_simple_mode.now());
  const long schedule_type = schedule.get() == Py_None ? 0 : is_simple ? 1 : 2;
  const auto of_simple_schedule = [&](const host::Name& name) {
    return is_simple ? host::get(schedule, name) : host::real(0.0);
  };

  host::Mapping document;
  document.put(names.type, host::get(attribute(names.private_drain_type), names.value))
      .put(names.range_from, attribute(names.range_from))
      .put(names.range_to, attribute(names.range_to))
      .put(names.bottom_position, attribute(names.bottom_position))
      .put(names.center_to_center, attribute(names.center_to_center))
      .put(names.width_diameter, attribute(names.width_diameter))
      .put(names.thickness, value_or(attribute(names.private_thickness), fallback_thickness))
      .put(names.position_drain, value_or(attribute(names.private_position_drain), 0.0))
      .put(names.grid, grid.get() == Py_None ? host::integer(0) : host::get(grid, names.value))
      .put(names.schedule_type, host::integer(schedule_type))
      .put(names.start_of_drainage, value_or(attribute(names.private_start_of_drainage), 0.0))
      .put(names.phreatic_level, value_or(attribute(names.private_phreatic_level_in_drain), 0.0))
      .put(names.begin_time, of_simple_schedule(names.begin_time))
      .put(names.end_time, of_simple_schedule(names.end_time))
      .put(names.underpressure, of_simple_schedule(names.underpressure))
      .put(names.dewatering, of_simple_schedule(names.dewatering))
      .put(names.detailed_schedule,
           PyList_Check(schedule.get()) != 0 ? schedule : placeholder_schedule());
  return document.done();
}

}  // namespace

void add_drain_document(host::ClassBody& body, State& state) {
  body.add(
      state,
      host::method<serialize>(
          "_serialize",
          "Return the drain's part of the document, always with the same keys, as a new mapping.")
          .returning("dict[str, Any]"));
}

}  // namespace dsettlement::soil
