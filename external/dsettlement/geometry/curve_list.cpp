#include "geometry/curve_list.hpp"

#include "geometry/equality.hpp"
#include "geometry/index/trust.hpp"
#include "host/arithmetic.hpp"
#include "host/class_body.hpp"
#include "host/elements.hpp"
#include "host/sequence.hpp"
#include "host/unpack.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

// Whether a chain is of one of this module's own classes, as they were made.
bool is_of_own_class(const State& state, Handle chain) {
  return (state.curve_list.is_class_of(chain) || state.boundary.is_class_of(chain) ||
          state.pl_line.is_class_of(chain)) &&
         are_classes_as_made(state);
}

constexpr Parameter init_parameters[] = {host::self, {"curves", "list[_Curve]"}};

// Where Python runs without assertions there is no check, as of any `assert`.
Ref init(State& state, Arguments arguments) {
  const auto [self, curves] = arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  const Py_ssize_t count = host::length(curves);
  for (Py_ssize_t i = 0; i < count - 1; ++i) {
    const auto [curve, next_curve] = host::unpack<2>(host::slice(curves, i, i + 2));
    if (!state.has_assertions) continue;
    const Ref end = host::get(curve, names.p2);
    if (!host::compare(end, Py_EQ, host::get(next_curve, names.p1))) {
      host::raise(PyExc_AssertionError, "Curves must be connected");
    }
  }
  if (is_of_own_class(state, self)) {
    state.chain_curves.initialize(self, curves);
  } else {
    host::set(self, names.private_curves, curves);
  }
  return host::none();
}

Ref as_tuple(const State& state, Handle chain) {
  return Ref::steal(PySequence_Tuple(state.chain_curves.read(chain).get()));
}

// By the curves alone: a boundary and a pl-line along the same curves are equal.
Ref equals(State& state, Arguments arguments) {
  const auto [self, other] = arguments.first<std::size(other_parameters)>();
  if (!host::is_instance(other, state.curve_list.now())) return not_implemented();
  const Ref curves = as_tuple(state, self);
  return Ref::steal(PyObject_RichCompare(curves.get(), as_tuple(state, other).get(), Py_EQ));
}

Ref hash(State& state, Arguments arguments) {
  return hash_of(as_tuple(state, arguments[0]));
}

Ref curves(State& state, Arguments arguments) {
  return host::list_of(state.chain_curves.read(arguments[0]));
}

Ref points(State& state, Arguments arguments) {
  const State::Names& names = state.names;
  const Ref curves = state.chain_curves.read(arguments[0]);
  host::List points;
  for (const Ref& curve : host::Elements(curves)) points.append(host::get(curve, names.p1));
  points.append(host::get(host::item(curves, -1), names.p2));
  return points.done();
}

constexpr Parameter area_parameters[] = {host::self, {"y", "float", host::number(0.0)}};

// The trapezium rule, one curve after the other.
Ref area_above_horizontal(State& state, Arguments arguments) {
  const auto [self, y] = arguments.first<std::size(area_parameters)>();
  const State::Names& names = state.names;
  const Ref two = host::integer(2);
  Ref area = host::real(0.0);
  for (const Ref& curve : host::Elements(state.chain_curves.read(self))) {
    const auto coordinate = [&](Handle point, Handle axis) {
      return host::get(host::get(curve, point), axis);
    };
    const Ref y1 = coordinate(names.p1, names.y);
    const Ref height =
        host::difference(host::quotient(host::sum(y1, coordinate(names.p2, names.y)), two), y);
    const Ref x2 = coordinate(names.p2, names.x);
    const Ref width = host::difference(x2, coordinate(names.p1, names.x));
    area = host::sum(area, host::product(width, height));
  }
  return area;
}

void note_change(State& state, Handle /*chain*/) {
  state.changes().note();
}

}  // namespace

void define_curve_lists(host::Module& module, State& state) {
  host::ClassBody curve_list(module, "_CurveList", " Boundaries and Pl-lines are curve lists. ");
  curve_list.add(
      state,
      host::method<init>(
          "__init__", init_parameters,
          R"( Consist of only unique curves; guaranteed upon creation of _Boundary and _PlLine. 

curves: the chain from left to right; the list is kept, not copied.

Raises AssertionError if a curve does not begin where the one before it ends.)"));
  curve_list.add(
      state,
      host::method<equals>("__eq__", other_parameters, "Return self == other.").returning("bool"));
  curve_list.add(state, host::method<hash>("__hash__", "Return hash(self).").returning("int"));
  curve_list.add(state,
                 host::property<curves>("curves", "The curves from left to right, as a new list.")
                     .returning("list[_Curve]"));
  curve_list.add(
      state, host::property<points>(
                 "points",
                 R"(The points from left to right, as a new list: one more than there are curves.

Raises IndexError if there is no curve.)")
                 .returning("list[_Point]"));
  curve_list.add(state, host::method<area_above_horizontal>(
                            "area_above_horizontal", area_parameters,
                            R"( Area above horizontal line defined by y-coordinate. 

y: level of the line [m].

Returns the area by the trapezium rule [m²]; what lies below the line counts negative.)")
                            .returning("float"));
  curve_list.add("_curves", state.chain_curves.watch<State, note_change>(state.field_type,
                                                                         module.object(), state));
  state.fields_of_chains.add_to(curve_list);
  state.curve_list = curve_list.make();

  host::ClassBody pl_line(module, "_PlLine", " Piezometric level line. ");
  state.pl_line = pl_line.make({state.curve_list.original()});

  host::ClassBody boundary(module, "_Boundary", " Boundary. ");
  state.boundary = boundary.make({state.curve_list.original()});
}

}  // namespace dsettlement::geometry
