#include "soil/drain_schedule.hpp"

#include "host/class_body.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self,
                                         {"begin_time", "float"},
                                         {"end_time", "float"},
                                         {"underpressure", "float"},
                                         {"dewatering_head_or_pressure", "float"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, begin_time, end_time, underpressure, dewatering] =
      arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  host::set(self, names.begin_time, begin_time);
  host::set(self, names.end_time, end_time);
  host::set(self, names.underpressure, underpressure);
  host::set(self, names.dewatering, dewatering);
  return host::none();
}

}  // namespace

void define_drain_schedule(host::Module& module, State& state) {
  state.drain_type = host::make_enumeration(module, "DrainType",
                                            R"(The kind of vertical drain.

STRIP: prefabricated strips.
COLUMN: round columns.
SAND_WALL: walls of sand.

A member is equal only to itself.)",
                                            {{"STRIP", 0}, {"COLUMN", 1}, {"SAND_WALL", 2}});
  state.drain_grid =
      host::make_enumeration(module, "DrainGrid",
                             R"(The grid in which strips or columns are placed.

TRIANGULAR: at the corners of triangles.
RECTANGULAR: at the corners of squares.
UNDETERMINED: in a grid of which only the distance is known.

A member is equal only to itself.)",
                             {{"TRIANGULAR", 0}, {"RECTANGULAR", 1}, {"UNDETERMINED", 2}});

  constexpr const char* fields =
      R"(begin_time: start of the dewatering [days].
end_time: end of the dewatering [days].
underpressure: [kPa].
dewatering_head_or_pressure: water head [m], or tube pressure [kPa] if the drain is a
    sand wall.)";
  host::ClassBody body(module, "DrainageSimpleMode",
                       "Simple drainage schema; to be used in VerticalDrain");
  body.declare("begin_time", "float");
  body.declare("end_time", "float");
  body.declare("underpressure", "float");
  body.declare("dewatering_head_or_pressure", "float");
  body.add(state, host::method<init>("__init__", init_parameters, fields));
  state.drainage_simple_mode = body.make();
}

}  // namespace dsettlement::soil
