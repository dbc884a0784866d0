#include "soil/load.hpp"

#include "host/class_body.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter serialize_parameters[] = {host::self, {"name", "str"}};

Ref left_to_concrete_loads(State& /*state*/, Arguments /*arguments*/) {
  return host::none();
}

constexpr auto abstract_serialize =
    host::method<left_to_concrete_loads>("_serialize", serialize_parameters,
                                         R"(Return the load's part of the document as a new mapping.

name: the name of the load.)")
        .returning("dict[str, Any]")
        .abstract();

constexpr Parameter init_parameters[] = {host::self,
                                         {"time", "int"},
                                         {"unit_weight", "float"},
                                         {"height", "float"},
                                         {"y_application", "float"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, time, unit_weight, height, y_application] =
      arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  static_cast<void>(host::call(host::super(state.uniform_load.original(), self, names.init)));
  host::set(self, names.time, time);
  host::set(self, names.unit_weight, unit_weight);
  host::set(self, names.height, height);
  host::set(self, names.y_application, y_application);
  return host::none();
}

// The code by which D-Settlement knows a uniform load among its other loads.
constexpr long uniform_load_code = 3;

Ref serialize(State& state, Arguments arguments) {
  const auto [self, name] = arguments.first<std::size(serialize_parameters)>();
  const State::Names& names = state.names;
  return host::Mapping()
      .put(names.name, name)
      .put(names.type, host::integer(uniform_load_code))
      .put(names.time, host::get(self, names.time))
      .put(names.unit_weight, host::get(self, names.unit_weight))
      .put(names.height, host::get(self, names.height))
      .put(names.y_application, host::get(self, names.y_application))
      .done();
}

}  // namespace

void define_loads(host::Module& module, State& state) {
  host::ClassBody load(module, "_Load", "A weight placed on the model at a given time.");
  load.add(state, abstract_serialize);
  state.load = load.make_with(state.toolkit.abstract_metaclass.original());

  host::ClassBody other_load(module, "_OtherLoad",
                             "A load that is described by numbers alone, without points.");
  other_load.add(state, abstract_serialize);
  state.other_load = other_load.make({state.load.original()});

  host::ClassBody uniform_load(module, "_UniformLoad",
                               R"(A load of the same weight everywhere.

time: the moment of application [days]; -1 marks an initial load.
unit_weight: [kN/m³].
height: [m].
y_application: level of application [m].)");
  uniform_load.declare("time", "int");
  uniform_load.declare("unit_weight", "float");
  uniform_load.declare("height", "float");
  uniform_load.declare("y_application", "float");
  uniform_load.add(state, host::method<init>("__init__", init_parameters,
                                             R"(Keep the four values; nothing is checked.

time: [days]; -1 marks an initial load.
unit_weight: [kN/m³].
height: [m].
y_application: [m].)"));
  uniform_load.add(
      state, host::method<serialize>("_serialize", serialize_parameters,
                                     R"(Return the load's part of the document as a new mapping.

name: the name of the load, which the load does not know.)")
                 .returning("dict[str, Any]"));
  state.uniform_load = uniform_load.make({state.other_load.original()});
}

}  // namespace dsettlement::soil
