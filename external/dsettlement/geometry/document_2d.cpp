#include "geometry/document_2d.hpp"

#include "geometry/index/index.hpp"
#include "geometry/index/numbering.hpp"
#include "geometry/index/plain.hpp"
#include "host/arithmetic.hpp"
#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

constexpr long two_dimensional = 1;

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  return host::Mapping()
      .update(host::call(host::super(state.model_2d.original(), self, names.private_serialize)))
      .put(names.model_type, host::integer(two_dimensional))
      .put(names.points, host::call_method(self, names.private_serialize_points))
      .put(names.curves, host::call_method(self, names.private_serialize_curves))
      .put(names.boundaries, host::call_method(self, names.private_serialize_boundaries))
      .put(names.pl_lines, host::call_method(self, names.private_serialize_pl_lines))
      .put(names.layers, host::call_method(self, names.private_serialize_layers))
      .put(names.phreatic_line, host::get(self, names.private_phreatic_line))
      .done();
}

Ref serialize_points(State& state, Arguments arguments) {
  const State::Names& names = state.names;
  const Ref zero = host::integer(0);
  host::List points;
  for (const Ref& point : host::Elements(host::get(arguments[0], names.private_points))) {
    const Ref x = host::get(point, names.x);
    const Ref y = host::get(point, names.y);
    const Ref triple = Ref::steal(PyTuple_Pack(3, x.get(), y.get(), zero.get()));
    if (plain_number(x) && plain_number(y)) host::leave_to_its_count(triple);
    points.append(triple);
  }
  return points.done();
}

// The number of the first equal entry of a list of the model, counted from 1. The list is asked for
// each time, since what has run before may have put another in its place.
Ref number_in(const State& state, Handle model, Handle list, Handle object) {
  const Ref position = host::call_method(host::get(model, list), state.names.index, object);
  return host::sum(position, host::integer(1));
}

Ref serialize_curves(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  if (Ref numbered = number_curves(state, self)) return numbered;
  host::List curves;
  for (const Ref& curve : host::Elements(host::get(self, names.private_curves))) {
    const Ref p1 = number_in(state, self, names.private_points, host::get(curve, names.p1));
    const Ref p2 = number_in(state, self, names.private_points, host::get(curve, names.p2));
    curves.append(Ref::steal(PyTuple_Pack(2, p1.get(), p2.get())));
  }
  return curves.done();
}

Ref search_chains(const State& state, Handle self, Handle chains) {
  const State::Names& names = state.names;
  host::List list;
  for (const Ref& chain : host::Elements(chains)) {
    host::List numbers;
    for (const Ref& curve : host::Elements(host::get(chain, names.curves))) {
      numbers.append(number_in(state, self, names.private_curves, curve));
    }
    list.append(numbers.done());
  }
  return list.done();
}

Ref serialize_boundaries(State& state, Arguments arguments) {
  if (Ref numbered = number_boundaries(state, arguments[0])) return numbered;
  return search_chains(state, arguments[0], boundaries_of(state, arguments[0]));
}

Ref serialize_pl_lines(State& state, Arguments arguments) {
  if (Ref numbered = number_pl_lines(state, arguments[0])) return numbered;
  return search_chains(state, arguments[0], state.pl_lines.read(arguments[0]));
}

Ref serialize_layers(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  if (Ref numbered = number_layers(state, self)) return numbered;
  // Boundaries alone are counted from 0.
  const auto boundary_number = [&](Ref boundary) {
    if (host::is_instance(boundary, reinterpret_cast<PyObject*>(&PyLong_Type))) return boundary;
    return host::call_method(boundaries_of(state, self), names.index, boundary);
  };
  const auto pl_line_number = [&](Ref pl_line) {
    if (!host::is_instance(pl_line, state.pl_line.now())) return pl_line;
    const Ref position = host::call_method(state.pl_lines.read(self), names.index, pl_line);
    return host::sum(position, host::integer(1));
  };
  host::List layers;
  for (const Ref& layer : host::Elements(host::get(self, names.private_layers))) {
    const auto get = [&](Handle name) { return host::get(layer, name); };
    layers.append(host::Mapping()
                      .put(names.material, get(names.material))
                      .put(names.boundary_top, boundary_number(get(names.boundary_top)))
                      .put(names.boundary_bottom, boundary_number(get(names.boundary_bottom)))
                      .put(names.pl_top, pl_line_number(get(names.pl_line_top)))
                      .put(names.pl_bottom, pl_line_number(get(names.pl_line_bottom)))
                      .done());
  }
  return layers.done();
}

}  // namespace

void add_document(host::ClassBody& body, State& state) {
  body.add(
      state,
      host::method<serialize>(
          "_serialize",
          R"(Return the model's document as a new mapping: what all models share, then 'model_type',
'points', 'curves', 'boundaries', 'pl_lines', 'layers' and 'phreatic_line'.

A reference is the number of the first equal entry. Raises ValueError if a chain has a point
or a layer a pl-line that the model does not know.)")
          .returning("dict[str, Any]"));
  body.add(
      state,
      host::method<serialize_points>(
          "_serialize_points",
          "Return a new list with the triple (x, y, 0) of each point, in the order of creation.")
          .returning("list[tuple[float, float, float]]"));
  body.add(state, host::method<serialize_curves>(
                      "_serialize_curves",
                      "Return a new list with the two point numbers of each curve, counted from 1.")
                      .returning("list[tuple[int, int]]"));
  body.add(
      state,
      host::method<serialize_boundaries>(
          "_serialize_boundaries",
          R"(Return a new list with the curve numbers of each boundary, from low to high, counted from 1.)")
          .returning("list[list[int]]"));
  body.add(
      state,
      host::method<serialize_pl_lines>(
          "_serialize_pl_lines",
          R"(Return a new list with the curve numbers of each pl-line, in the order of creation, counted
from 1.)")
          .returning("list[list[int]]"));
  body.add(
      state,
      host::method<serialize_layers>(
          "_serialize_layers",
          R"(Return a new list with the material, boundaries and pl-lines of each layer, the bottom layer
first. Boundaries are counted from 0, pl-lines from 1.)")
          .returning("list[dict[str, Any]]"));
}

}  // namespace dsettlement::geometry
