#include "geometry/point.hpp"

#include "geometry/equality.hpp"
#include "host/class_body.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self, {"x", "float"}, {"y", "float"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, x, y] = arguments.first<std::size(init_parameters)>();
  state.point.initialize(self, state.names.private_x, x);
  state.point.initialize(self, state.names.private_y, y);
  return host::none();
}

// Coordinates are compared as they are, by their own equality and without a tolerance.
Ref equals(State& state, Arguments arguments) {
  const auto [self, other] = arguments.first<2>();
  if (!host::is_instance(other, state.point.now())) return not_implemented();
  return both_equal(self, other, state.names.private_x, state.names.private_y);
}

Ref hash(State& state, Arguments arguments) {
  return hash_of_both(arguments[0], state.names.private_x, state.names.private_y);
}

Ref show(State& state, Arguments arguments) {
  return host::text("_Point({}, {})", {host::get(arguments[0], state.names.private_x),
                                       host::get(arguments[0], state.names.private_y)});
}

}  // namespace

void define_point(host::Module& module, State& state) {
  host::ClassBody body(module, "_Point",
                       R"(A point of the cross-section.

Points are equal if both coordinates are; there is no tolerance, and nothing is converted.)");
  body.add(state, host::method<init>("__init__", init_parameters,
                                     R"(Keep the coordinates as given; nothing is checked.

x: x coordinate [m].
y: y coordinate [m].)"));
  body.add(
      state,
      host::getter<State, &State::Names::private_x>("x", "x coordinate [m].").returning("float"));
  body.add(
      state,
      host::getter<State, &State::Names::private_y>("y", "y coordinate [m].").returning("float"));
  body.add(
      state,
      host::method<equals>("__eq__", other_parameters, "Return self == other.").returning("bool"));
  body.add(state, host::method<hash>("__hash__", "Return hash(self).").returning("int"));
  body.add(state, host::method<show>("__repr__",
                                     R"doc(Return the text form, such as "_Point(25, 10.0)".)doc")
                      .returning("str"));
  state.fields_of_points.add_to(body);
  state.point = body.make();
}

}  // namespace dsettlement::geometry
