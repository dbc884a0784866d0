#include "geometry/document_2d.hpp"

#include "host/arithmetic.hpp"
#include "host/containers.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

constexpr long two_dimensional = 1;

Ref make_document(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  return host::Mapping()
      .update(host::call(host::super(state.model_2d.original(), self, names.serialize)))
      .put(names.model_type, host::integer(two_dimensional))
      .put(names.points, host::call_method(self, names.serialize_points))
      .put(names.curves, host::call_method(self, names.serialize_curves))
      .put(names.boundaries, host::call_method(self, names.serialize_boundaries))
      .put(names.pl_lines, host::call_method(self, names.serialize_pl_lines))
      .put(names.layers, host::call_method(self, names.serialize_layers))
      .put(names.phreatic_line, host::get(self, names.private_phreatic_line))
      .done();
}

Ref list_points(State& state, Arguments arguments) {
  const State::Names& names = state.names;
  const Ref zero = host::integer(0);
  host::List points;
  host::for_each(host::get(arguments[0], names.private_points), [&](const Ref& point) {
    const Ref x = host::get(point, names.x);
    const Ref y = host::get(point, names.y);
    points.append(Ref::steal(PyTuple_Pack(3, x.get(), y.get(), zero.get())));
  });
  return points.done();
}

// Position of the first entry that equals the object.
Ref position(const State& state, Handle list, Handle object) {
  return host::call_method(list, state.names.index, object);
}

// The same, counted from 1: so are all references but those to boundaries.
Ref number(const State& state, Handle list, Handle object) {
  return host::sum(position(state, list, object), host::integer(1));
}

Ref list_curves(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  host::List curves;
  host::for_each(host::get(self, names.private_curves), [&](const Ref& curve) {
    const Ref points = host::get(self, names.private_points);
    const Ref p1 = number(state, points, host::get(curve, names.p1));
    const Ref p2 = number(state, points, host::get(curve, names.p2));
    curves.append(Ref::steal(PyTuple_Pack(2, p1.get(), p2.get())));
  });
  return curves.done();
}

Ref list_chains(const State& state, Handle self, Handle chains) {
  const State::Names& names = state.names;
  host::List list;
  host::for_each(chains, [&](const Ref& chain) {
    host::List numbers;
    host::for_each(host::get(chain, names.curves), [&](const Ref& curve) {
      numbers.append(number(state, host::get(self, names.private_curves), curve));
    });
    list.append(numbers.done());
  });
  return list.done();
}

Ref list_boundaries(State& state, Arguments arguments) {
  return list_chains(state, arguments[0], host::get(arguments[0], state.names.private_boundaries));
}

Ref list_pl_lines(State& state, Arguments arguments) {
  return list_chains(state, arguments[0], host::get(arguments[0], state.names.private_pl_lines));
}

Ref list_layers(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  const auto boundary = [&](Ref boundary) {
    if (host::is_instance(boundary, reinterpret_cast<PyObject*>(&PyLong_Type))) return boundary;
    return position(state, host::get(self, names.private_boundaries), boundary);
  };
  const auto pl_line = [&](Ref pl_line) {
    if (!host::is_instance(pl_line, state.pl_line.original())) return pl_line;
    return number(state, host::get(self, names.private_pl_lines), pl_line);
  };
  host::List layers;
  host::for_each(host::get(self, names.private_layers), [&](const Ref& layer) {
    layers.append(host::Mapping()
                      .put(names.material, host::get(layer, names.material))
                      .put(names.boundary_top, boundary(host::get(layer, names.boundary_top)))
                      .put(names.boundary_bottom, boundary(host::get(layer, names.boundary_bottom)))
                      .put(names.pl_top, pl_line(host::get(layer, names.pl_line_top)))
                      .put(names.pl_bottom, pl_line(host::get(layer, names.pl_line_bottom)))
                      .done());
  });
  return layers.done();
}

}  // namespace

constinit const host::Operation<State> serialize_2d =
    host::method<make_document>(
        "_serialize",
        "Return the model's document as a new mapping: what all models share, then 'model_type',\n"
        "'points', 'curves', 'boundaries', 'pl_lines', 'layers' and 'phreatic_line'.\n\n"
        "A reference is the number of the first equal entry. Raises ValueError if a chain has a "
        "point\n"
        "or a layer a pl-line that the model does not know.")
        .returning("dict[str, Any]");

constinit const host::Operation<State> serialize_points =
    host::method<list_points>(
        "_serialize_points",
        "Return a new list with the triple (x, y, 0) of each point, in the order of creation.")
        .returning("list[tuple[float, float, float]]");

constinit const host::Operation<State> serialize_curves =
    host::method<list_curves>(
        "_serialize_curves",
        "Return a new list with the two point numbers of each curve, counted from 1.")
        .returning("list[tuple[int, int]]");

constinit const host::Operation<State> serialize_boundaries =
    host::method<list_boundaries>("_serialize_boundaries",
                                  "Return a new list with the curve numbers of each boundary, from "
                                  "low to high, counted from 1.")
        .returning("list[list[int]]");

constinit const host::Operation<State> serialize_pl_lines =
    host::method<list_pl_lines>("_serialize_pl_lines",
                                "Return a new list with the curve numbers of each pl-line, in the "
                                "order of creation, counted\n"
                                "from 1.")
        .returning("list[list[int]]");

constinit const host::Operation<State> serialize_layers =
    host::method<list_layers>("_serialize_layers",
                              "Return a new list with the material, boundaries and pl-lines of "
                              "each layer, the bottom layer\n"
                              "first. Boundaries are counted from 0, pl-lines from 1.")
        .returning("list[dict[str, Any]]");

}  // namespace dsettlement::geometry
