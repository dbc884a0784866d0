#include "model/vertical.hpp"

#include "host/class_body.hpp"

namespace dsettlement::model {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self, {"x", "float"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, x] = arguments.first<std::size(init_parameters)>();
  state.vertical.initialize(self, state.names.private_x, x);
  return host::none();
}

Ref serialize(State& state, Arguments arguments) {
  return host::Mapping().put(state.names.x, host::get(arguments[0], state.names.private_x)).done();
}

}  // namespace

void define_vertical(host::Module& module, State& state) {
  host::ClassBody body(
      module, "_Vertical",
      R"(A position along the x axis of the geometry for which D-Settlement reports results.

Each object is equal only to itself.)");
  body.add(state, host::method<init>("__init__", init_parameters,
                                     R"(Keep the position.

x: x coordinate [m]; kept as given.)"));
  body.add(
      state,
      host::getter<State, &State::Names::private_x>("x", "x coordinate [m].").returning("float"));
  body.add(state,
           host::method<serialize>("_serialize", "Return a new mapping with the one key 'x'.")
               .returning("dict[str, Any]"));
  state.fields_of_verticals.add_to(body);
  state.vertical = body.make();
}

}  // namespace dsettlement::model
