#include "geometry/document_2d.hpp"

#include "geometry/chain_positions.hpp"
#include "geometry/numbering.hpp"
#include "geometry/register.hpp"
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

// Spares the garbage collector a tuple of numbers, which can be part of no cycle. It would find
// that out by itself, at the cost of a few passes through everything there is.
void leave_to_its_count(Handle numbers) {
  PyObject_GC_UnTrack(numbers);
}

Ref list_points(State& state, Arguments arguments) {
  const State::Names& names = state.names;
  const Ref zero = host::integer(0);
  host::List points;
  host::for_each(host::get(arguments[0], names.private_points), [&](const Ref& point) {
    const Ref x = host::get(point, names.x);
    const Ref y = host::get(point, names.y);
    const Ref triple = Ref::steal(PyTuple_Pack(3, x.get(), y.get(), zero.get()));
    if (plain_number(x) && plain_number(y)) leave_to_its_count(triple);
    points.append(triple);
  });
  return points.done();
}

bool is_plain_list(Handle object) {
  return PyList_CheckExact(static_cast<PyObject*>(object)) != 0;
}

bool is_number(Handle object) {
  return PyLong_CheckExact(static_cast<PyObject*>(object)) != 0;
}

Ref list_curves(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  const Ref curves_of_model = host::get(self, names.private_curves);
  Numbering<PointKey> points(state, self, names.private_points, nullptr, key_of_point);
  if (!is_plain_list(curves_of_model)) points.doubt();
  host::List curves;
  host::for_each(curves_of_model, [&](const Ref& curve) {
    if (!state.made.curve.is_class_of(curve)) points.doubt();
    const Ref p1 = points.number_of(host::get(curve, names.p1));
    const Ref p2 = points.number_of(host::get(curve, names.p2));
    const Ref pair = Ref::steal(PyTuple_Pack(2, p1.get(), p2.get()));
    if (is_number(p1) && is_number(p2)) leave_to_its_count(pair);
    curves.append(pair);
  });
  return curves.done();
}

// Whether nothing of an application runs when the curves of all chains are asked for.
bool are_chains_plain(const State& state, Handle chains) {
  if (!is_plain_list(chains)) return false;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(static_cast<PyObject*>(chains)); ++i) {
    const Ref chain = host::share(PyList_GET_ITEM(static_cast<PyObject*>(chains), i));
    if (!curves_of_plain_chain(state, chain)) return false;
  }
  return true;
}

bool are_chains_plain(const State& state, Handle model, const host::WatchedField& field) {
  const Ref chains = field.peek(model);
  return chains && are_chains_plain(state, chains);
}

template <typename Key>
Ref number_chains(const State& state, Handle self, Handle chains,
                  typename Numbering<Key>::Read read) {
  const State::Names& names = state.names;
  Numbering<Key> curves(state, self, names.private_curves, state.curves_property.get(), read);
  if (!are_chains_plain(state, self, state.boundaries) ||
      !are_chains_plain(state, self, state.pl_lines) || !are_chains_plain(state, chains)) {
    curves.doubt();
  }
  host::List list;
  host::for_each(chains, [&](const Ref& chain) {
    host::List numbers;
    host::for_each(host::get(chain, names.curves),
                   [&](const Ref& curve) { numbers.append(curves.number_of(curve)); });
    list.append(numbers.done());
  });
  return list.done();
}

// Whether equal curves of the model are known to be the same.
bool are_equal_curves_same(State& state, Handle self) {
  const InUse<ChainRegister> chains = chain_register(state, self);
  return chains && !chains->has_twins();
}

std::optional<PyObject*> itself(const State& /*state*/, Handle object) {
  return static_cast<PyObject*>(object);
}

Ref list_chains(State& state, Handle self, const host::WatchedField& field) {
  put_boundaries_in_order(state, self);
  if (are_equal_curves_same(state, self)) {
    return number_chains<PyObject*>(state, self, field.read(self), itself);
  }
  return number_chains<CurveKey>(state, self, field.read(self), key_of_curve);
}

Ref list_boundaries(State& state, Arguments arguments) {
  return list_chains(state, arguments[0], state.boundaries);
}

Ref list_pl_lines(State& state, Arguments arguments) {
  return list_chains(state, arguments[0], state.pl_lines);
}

// Whether asking the object for its class runs nothing of an application.
bool tells_its_class_plainly(const State& state, Handle object) {
  PyObject* of = object;
  return of == Py_None || PyLong_CheckExact(of) != 0 || PyBool_Check(of) != 0 ||
         PyFloat_CheckExact(of) != 0 || PyUnicode_CheckExact(of) != 0 ||
         curves_of_plain_chain(state, object);
}

Ref list_layers(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  put_boundaries_in_order(state, self);
  ChainPositions boundaries(state, self, state.boundaries);
  ChainPositions pl_lines(state, self, state.pl_lines);
  const auto doubt = [&] {
    boundaries.doubt();
    pl_lines.doubt();
  };
  // Boundaries alone are counted from 0.
  const auto boundary_number = [&](Ref boundary) {
    if (!tells_its_class_plainly(state, boundary)) doubt();
    if (host::is_instance(boundary, reinterpret_cast<PyObject*>(&PyLong_Type))) return boundary;
    return boundaries.of(boundary);
  };
  const auto pl_line_number = [&](Ref pl_line) {
    if (!tells_its_class_plainly(state, pl_line)) doubt();
    if (!host::is_instance(pl_line, state.pl_line.now())) return pl_line;
    return host::sum(pl_lines.of(pl_line), host::integer(1));
  };
  const Ref list = host::get(self, names.private_layers);
  if (!is_plain_list(list) || !state.made.layer.holds() || !state.pl_line.is_original()) doubt();
  host::List layers;
  host::for_each(list, [&](const Ref& layer) {
    if (!state.made.layer.is_class_of(layer)) doubt();
    const auto get = [&](Handle name) { return host::get(layer, name); };
    layers.append(host::Mapping()
                      .put(names.material, get(names.material))
                      .put(names.boundary_top, boundary_number(get(names.boundary_top)))
                      .put(names.boundary_bottom, boundary_number(get(names.boundary_bottom)))
                      .put(names.pl_top, pl_line_number(get(names.pl_line_top)))
                      .put(names.pl_bottom, pl_line_number(get(names.pl_line_bottom)))
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
