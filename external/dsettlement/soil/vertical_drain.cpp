#include "soil/vertical_drain.hpp"

#include "host/class_body.hpp"
#include "host/filled.hpp"
#include "soil/drain_checks.hpp"
#include "soil/drain_document.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::no_object;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {
    host::self,
    {"drain_type", "DrainType"},
    {"range_from", "float"},
    {"range_to", "float"},
    {"bottom_position", "float"},
    {"center_to_center", "float"},
    {"width_diameter", "float"},
    {"thickness", "float", no_object},
    {"position_drain", "float", no_object},
    {"grid", "DrainGrid", no_object},
    {"start_of_drainage", "float", no_object},
    {"phreatic_level_in_drain", "float", no_object},
    {"schedule", "DrainageSimpleMode | list[tuple[float, float, float]]", no_object}};

Ref init(State& state, Arguments arguments) {
  const auto [self, drain_type, range_from, range_to, bottom_position, center_to_center,
              width_diameter, thickness, position_drain, grid, start_of_drainage,
              phreatic_level_in_drain, schedule] = arguments.first<std::size(init_parameters)>();
  check_drain(state, {.drain_type = drain_type,
                      .center_to_center = center_to_center,
                      .width_diameter = width_diameter,
                      .thickness = thickness,
                      .position_drain = position_drain,
                      .grid = grid,
                      .start_of_drainage = start_of_drainage,
                      .phreatic_level_in_drain = phreatic_level_in_drain,
                      .schedule = schedule});
  const State::Names& names = state.names;
  host::set(self, names.private_drain_type, drain_type);
  host::set(self, names.range_from, range_from);
  host::set(self, names.range_to, range_to);
  host::set(self, names.bottom_position, bottom_position);
  host::set(self, names.center_to_center, center_to_center);
  host::set(self, names.width_diameter, width_diameter);
  host::set(self, names.private_thickness, thickness);
  host::set(self, names.private_position_drain, position_drain);
  host::set(self, names.private_grid, grid);
  host::set(self, names.private_start_of_drainage, start_of_drainage);
  host::set(self, names.private_phreatic_level_in_drain, phreatic_level_in_drain);
  host::set(self, names.private_schedule, schedule);
  return host::none();
}

constexpr auto fields = host::filled(R"(drain_type: kind of drain.
range_from, range_to: range along x over which drainage takes place [m].
bottom_position: level of the bottom of the drains [m].
center_to_center: distance between the centres of drains [m], from {} to {}.
width_diameter: width of the drains, or diameter for COLUMN [m], from {} to {}.
thickness: thickness of a strip [m], from {} to {}; must be set for STRIP.
position_drain: level of the drain pipe [m]; must be set for SAND_WALL with a schedule.
grid: grid of the drains; must be set for STRIP and COLUMN.
start_of_drainage: [days], from 0 to {}; must be set unless the schedule is a list.
phreatic_level_in_drain: [m]; must be set unless the schedule is a list.
schedule: None; a DrainageSimpleMode; or a list of triples of time [days], underpressure
    [kPa] and water head [m] (tube pressure [kPa] for SAND_WALL).

Raises ModelError for the first value that is missing or out of its range.)",
                                     least_size, largest_size, least_size, largest_size, least_size,
                                     largest_size, largest_time);

}  // namespace

void define_vertical_drain(host::Module& module, State& state) {
  host::ClassBody body(
      module, "VerticalDrain",
      R"(The vertical drains of a model: what they are, where they are, and the schedule of their dewatering.

Doesn't change after construction.)");
  body.declare("range_from", "float");
  body.declare("range_to", "float");
  body.declare("bottom_position", "float");
  body.declare("center_to_center", "float");
  body.declare("width_diameter", "float");
  body.add(state, host::method<init>("__init__", init_parameters, fields));
  body.add(state, host::getter<State, &State::Names::private_position_drain>(
                      "position_drain", "Level of the drain pipe [m], or None.")
                      .returning("float | None"));
  add_drain_document(body, state);
  state.vertical_drain = body.make();
}

}  // namespace dsettlement::soil
