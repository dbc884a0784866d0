#include "geometry/chains.hpp"

#include <tuple>
#include <utility>

#include "geometry/index/drawing.hpp"
#include "geometry/index/index.hpp"
#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/sequence.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

// There is no list of curves: the curves of a model are those of its chains.
Ref curves(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  Ref all = host::List().done();
  const auto extend_by = [&](const Ref& chain) {
    static_cast<void>(
        Ref::steal(PySequence_InPlaceConcat(all.get(), host::get(chain, names.curves).get())));
  };
  for (const Ref& boundary : host::Elements(boundaries_of(state, self))) extend_by(boundary);
  for (const Ref& pl_line : host::Elements(state.pl_lines.read(self))) extend_by(pl_line);
  return all;
}

// The first of the known objects that equals the new one, or an empty Ref.
Ref first_equal(Handle known, Handle object) {
  for (const Ref& candidate : host::Elements(known)) {
    if (host::compare(candidate, Py_EQ, object)) return candidate;
  }
  return {};
}

constexpr Parameter points_parameters[] = {host::self, {"points", "list[_Point]"}};

Ref create_curves(State& state, Arguments arguments) {
  const auto [self, points] = arguments.first<std::size(points_parameters)>();
  const State::Names& names = state.names;
  const auto is_off_limit = [&, self = self, points = points](Py_ssize_t point, Py_ssize_t limit) {
    const Ref x = host::get(host::item(points, point), names.x);
    return host::compare(x, Py_NE, host::item(host::get(self, names.private_limits), limit));
  };
  if (is_off_limit(0, 0) || is_off_limit(-1, 1)) {
    state.toolkit.refuse(
        "First and last points must be on the left and right boundary limits respectively");
  }
  host::List curves;
  const Py_ssize_t count = host::length(points);
  for (Py_ssize_t i = 0; i < count - 1; ++i) {
    const Ref p1 = host::item(points, i);
    curves.append(
        host::call_method(self, names.private_create_curve, p1, host::item(points, i + 1)));
  }
  return curves.done();
}

constexpr Parameter curve_parameters[] = {host::self, {"p1", "_Point"}, {"p2", "_Point"}};

Ref create_curve(State& state, Arguments arguments) {
  const auto [self, p1, p2] = arguments.first<std::size(curve_parameters)>();
  const Ref curve = host::call(state.curve.now(), p1, p2);
  const Ref known = first_equal(host::get(self, state.names.private_curves), curve);
  return known ? known : curve;
}

// A chain that does not connect was given points that run backwards.
Ref make_chain(const State& state, const host::Global& chain_class, Handle curves,
               const char* refusal) {
  try {
    return host::call(chain_class.now(), curves);
  } catch (const host::ErrorSet&) {
    Ref failure = host::take_error();
    if (!host::is_of_class(failure, PyExc_AssertionError)) host::raise_again(std::move(failure));
    state.toolkit.refuse_instead_of(failure, refusal);
  }
}

Ref create_boundary(State& state, Arguments arguments) {
  const auto [self, points] = arguments.first<std::size(points_parameters)>();
  const State::Names& names = state.names;
  if (const Ref drawn = draw_boundary(state, self, points)) return drawn;
  const Ref boundary = make_chain(state, state.boundary,
                                  host::call_method(self, names.private_create_curves, points),
                                  "Points of the boundary must be ascending in X-direction");
  if (const Ref known = first_equal(host::get(self, names.private_boundaries), boundary)) {
    return known;
  }
  host::call_method(host::get(self, names.private_boundaries), names.append, boundary);
  const Ref sort = host::get(host::get(self, names.private_boundaries), names.sort);
  static_cast<void>(host::call_with(sort, {}, {{names.key, state.by_area}}));
  return boundary;
}

constexpr Parameter pl_line_parameters[] = {
    host::self, {"points", "list[_Point]"}, {"is_phreatic", "bool", host::flag(false)}};

// The pl-line through the points, and whether it was there or has been added now.
std::pair<Ref, bool> search_pl_line(const State& state, Handle self, Handle points) {
  const State::Names& names = state.names;
  Ref pl_line =
      make_chain(state, state.pl_line, host::call_method(self, names.private_create_curves, points),
                 "Points of the pl-line must be ascending in X-direction");
  if (Ref known = first_equal(host::get(self, names.private_pl_lines), pl_line)) {
    return {std::move(known), true};
  }
  host::call_method(host::get(self, names.private_pl_lines), names.append, pl_line);
  return {std::move(pl_line), false};
}

// Makes a pl-line that has just been added the phreatic line. If memory runs out for that, the line
// goes again: another call would find it, and find nothing left to do.
void make_phreatic(const State& state, Handle self, Handle pl_line) {
  const Ref pl_lines = state.pl_lines.read(self);
  const Py_ssize_t number = host::length(pl_lines);
  try {
    host::set(self, state.names.private_phreatic_line, Ref::steal(PyLong_FromSsize_t(number)));
  } catch (const host::ErrorSet&) {
    Ref failure = host::take_error();
    PyObject* list = pl_lines.get();
    if (host::is_of_class(failure, PyExc_MemoryError) && PyList_CheckExact(list) != 0 &&
        PyList_GET_SIZE(list) > 0 &&
        PyList_GET_ITEM(list, PyList_GET_SIZE(list) - 1) == static_cast<PyObject*>(pl_line)) {
      host::check(PyList_SetSlice(list, PyList_GET_SIZE(list) - 1, PyList_GET_SIZE(list), nullptr));
    }
    host::raise_again(std::move(failure));
  }
}

Ref create_pl_line(State& state, Arguments arguments) {
  const auto [self, points, is_phreatic] = arguments.first<std::size(pl_line_parameters)>();
  const State::Names& names = state.names;
  auto [pl_line, is_known] = draw_pl_line(state, self, points);
  if (!pl_line) std::tie(pl_line, is_known) = search_pl_line(state, self, points);
  if (is_known) return pl_line;
  if (host::is_true(is_phreatic)) {
    const Ref phreatic_line = host::get(self, names.private_phreatic_line);
    if (host::compare(phreatic_line, Py_NE, host::integer(0))) {
      state.toolkit.refuse("Phreatic line is already set: {}", {phreatic_line});
    }
    make_phreatic(state, self, pl_line);
  }
  return pl_line;
}

}  // namespace

void add_chains(host::ClassBody& body, State& state) {
  body.add(
      state,
      host::property<curves>(
          "_curves",
          R"(The curves of all boundaries from low to high, then those of all pl-lines, as a new list.

A curve that several chains share occurs once per chain.)")
          .returning("list[_Curve]"));
  body.add(state, host::method<create_curves>(
                      "_create_curves", points_parameters,
                      R"(Return the curves between neighbouring points as a new list.

points: from the left limit of the model to the right.

Raises ModelError if the first or the last point is off its limit, or if two neighbours are
equal; IndexError if there is no point.)")
                      .returning("list[_Curve]"));
  body.add(
      state,
      host::method<create_curve>(
          "_create_curve", curve_parameters,
          R"(Return the curve between two points: the first equal one of the model, or a new one.

p1, p2: the points.

Raises ModelError if the points are equal.)")
          .returning("_Curve"));
  body.add(state,
           host::method<create_boundary>(
               "_create_boundary", points_parameters,
               R"(Return the boundary through the points: the equal one of the model, or a new one.

points: from the left limit of the model to the right.

A new boundary takes its place among the others by its area above y = 0.

Raises ModelError if the points do not run from limit to limit or not from left to right; the
model then stays as it is.)")
               .returning("_Boundary"));
  body.add(state, host::method<create_pl_line>("create_pl_line", pl_line_parameters,
                                               R"(Create a piezometric level line, or find it again.

points: made with create_point, from the left limit of the model to the right; two points may
    share an x coordinate.
is_phreatic: whether to set the current pl-line as the phreatic line. A model has one
    phreatic line, which stays; for a pl-line that exists already this is not looked at.

Returns the pl-line; if the model has one along the same points, that one.

Raises ModelError if the points do not run from limit to limit, if neighbours are equal or do
not run from left to right; the model then stays as it is. Raises ModelError too if the
phreatic line is set already; the new pl-line is kept then.)")
                      .returning("_PlLine"));
}

}  // namespace dsettlement::geometry
