#include "geometry/point.hpp"

#include "geometry/value_object.hpp"

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

using Value = ValueObject<&State::point, &State::Names::private_x, &State::Names::private_y>;

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
  Value::add_to(body, state, R"doc(Return the text form, such as "_Point(25, 10.0)".)doc");
  state.fields_of_points.add_to(body);
  state.point = body.make();
}

}  // namespace dsettlement::geometry
