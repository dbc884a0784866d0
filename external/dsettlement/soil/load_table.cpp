#include "soil/load_table.hpp"

#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/text.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter create_parameters[] = {host::self,          {"name", "str"},
                                           {"time", "int"},     {"unit_weight", "float"},
                                           {"height", "float"}, {"y_application", "float"}};

Ref create_uniform_load(State& state, Arguments arguments) {
  const auto [self, name, time, unit_weight, height, y_application] =
      arguments.first<std::size(create_parameters)>();
  const Ref load = host::call(state.uniform_load.now(), time, unit_weight, height, y_application);
  host::call_method(self, state.names.private_add_other_load, name, load);
  return host::none();
}

constexpr Parameter add_parameters[] = {host::self, {"name", "str"}, {"load", "_OtherLoad"}};

Ref add_other_load(State& state, Arguments arguments) {
  const auto [self, name, load] = arguments.first<std::size(add_parameters)>();
  const Ref loads = host::get(self, state.names.private_other_loads);
  if (host::contains(loads, name)) {
    state.toolkit.refuse("Load with name '{}' already exists", {name});
  }
  host::check(PyObject_SetItem(loads.get(), name, load));
  return host::none();
}

// In the order in which the loads were created.
Ref serialize_loads(State& state, Handle loads) {
  host::List list;
  for (const Ref& entry : host::items_of(loads)) {
    const Ref name = host::item(entry, 0);
    list.append(host::call_method(host::item(entry, 1), state.names.private_serialize, name));
  }
  return list.done();
}

Ref serialize_other_loads(State& state, Arguments arguments) {
  return serialize_loads(state, host::get(arguments[0], state.names.private_other_loads));
}

Ref serialize_non_uniform_loads(State& state, Arguments arguments) {
  return serialize_loads(state, host::get(arguments[0], state.names.private_non_uniform_loads));
}

}  // namespace

void add_uniform_loads(host::ClassBody& body, State& state) {
  body.add(state, host::method<create_uniform_load>("create_uniform_load", create_parameters,
                                                    R"(Create a load of the same weight everywhere.

name: name of the load, of any length; must be new among the uniform loads of this model.
time: the moment of application [days]; -1 marks an initial load.
unit_weight: [kN/m³].
height: [m].
y_application: level of application [m].

Raises ModelError if the name exists already; the earlier load then stays.)"));
}

void add_other_loads(host::ClassBody& body, State& state) {
  body.add(state, host::method<add_other_load>("_add_other_load", add_parameters,
                                               R"(Enter a load into the table of other loads.

name: name of the load; must be new in the table.
load: the load.

Raises ModelError if the name exists already.)"));
}

void add_load_documents(host::ClassBody& body, State& state) {
  body.add(
      state,
      host::method<serialize_non_uniform_loads>(
          "_serialize_non_uniform_loads",
          "Return a new list with the document of each non-uniform load, in the order of creation.")
          .returning("list[dict[str, Any]]"));
  body.add(state,
           host::method<serialize_other_loads>(
               "_serialize_other_loads",
               "Return a new list with the document of each other load, in the order of creation.")
               .returning("list[dict[str, Any]]"));
}

}  // namespace dsettlement::soil
