#include "geometry/curve.hpp"

#include "geometry/value_object.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self, {"p1", "_Point"}, {"p2", "_Point"}};

// A vertical curve keeps the order in which its points were given.
Ref init(State& state, Arguments arguments) {
  const auto [self, p1, p2] = arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  if (host::compare(p1, Py_EQ, p2)) {
    state.toolkit.refuse("Curve cannot consist of duplicate points");
  }
  const Ref x1 = host::get(p1, names.x);
  const Ref x2 = host::get(p2, names.x);
  const bool swapped = host::compare(x2, Py_LT, x1);
  state.curve.initialize(self, names.private_p1, swapped ? p2 : p1);
  state.curve.initialize(self, names.private_p2, swapped ? p1 : p2);
  return host::none();
}

using Value = ValueObject<&State::curve, &State::Names::private_p1, &State::Names::private_p2>;

}  // namespace

void define_curve(host::Module& module, State& state) {
  host::ClassBody body(module, "_Curve",
                       R"(A straight segment between two points, from the lower x to the higher.

Curves are equal if both end points are, so that the order in which the points were given
matters for vertical curves only.)");
  body.add(state,
           host::method<init>("__init__", init_parameters,
                              R"(Order the two points by x; points with the same x keep their order.

p1, p2: the end points, kept as the very objects.

Raises ModelError if the points are equal.)"));
  body.add(state,
           host::getter<State, &State::Names::private_p1>("p1", "End point with the lower x.")
               .returning("_Point"));
  body.add(state,
           host::getter<State, &State::Names::private_p2>("p2", "End point with the higher x.")
               .returning("_Point"));
  Value::add_to(body, state,
                R"doc(Return the text form, such as "_Curve(_Point(0, 1.0), _Point(2, 1.0))".)doc");
  state.fields_of_curves.add_to(body);
  state.curve = body.make();
}

}  // namespace dsettlement::geometry
