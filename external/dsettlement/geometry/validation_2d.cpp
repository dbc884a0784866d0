#include "geometry/validation_2d.hpp"

#include "geometry/codes.hpp"
#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

Ref layer_at(const State& state, Handle self, Py_ssize_t position, const char* refusal) {
  const Ref layers = host::get(self, state.names.private_layers);
  try {
    return host::item(layers, position);
  } catch (const host::ErrorSet&) {
    Ref failure = host::take_error();
    if (!host::is_of_class(failure, PyExc_IndexError)) host::raise_again(std::move(failure));
    state.toolkit.refuse_instead_of(failure, refusal);
  }
}

Ref validate(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  static_cast<void>(
      host::call(host::super(state.model_2d.original(), self, names.private_validate)));

  const Ref top_layer = layer_at(state, self, -1, "Model should have at least 1 layer.");
  const Ref pl_line_top = host::get(top_layer, names.pl_line_top);
  if (host::compare(pl_line_top, Py_EQ, host::integer(interpolation))) {
    state.toolkit.refuse(R"(pl_line_top for top layer cannot have interpolation value ({}): {})",
                         {host::integer(interpolation), host::get(top_layer, names.pl_line_top)});
  }
  if (host::compare(host::get(self, names.private_phreatic_line), Py_EQ, host::integer(0))) {
    state.toolkit.refuse("No phreatic line is set for the model.");
  }
  return host::none();
}

// The highest y of a chain's points, as `max` finds it.
Ref highest(const State& state, Handle boundary) {
  Ref level;
  for (const Ref& point : host::Elements(host::get(boundary, state.names.points))) {
    Ref y = host::get(point, state.names.y);
    if (!level || host::compare(y, Py_GT, level)) level = std::move(y);
  }
  if (!level) host::raise(PyExc_ValueError, "max() iterable argument is empty");
  return level;
}

Ref min_vertical_drains(State& state, Arguments arguments) {
  const Ref layer = layer_at(state, arguments[0], 0, "Create at least 1 layer");
  return highest(state, host::get(layer, state.names.boundary_bottom));
}

Ref max_vertical_drains(State& state, Arguments arguments) {
  const Ref layer = layer_at(state, arguments[0], -1, "Create at least 1 layer");
  return highest(state, host::get(layer, state.names.boundary_top));
}

}  // namespace

void add_validation(host::ClassBody& body, State& state) {
  body.add(state, host::method<validate>(
                      "_validate",
                      R"(Check the finished model; runs before each generation of an input file.

Raises ModelError for the first check that fails: the vertical drains against limits and
levels, at least one layer, no interpolation at the top of the top layer, a phreatic line.
The model stays as it is.)"));
  body.add(
      state,
      host::property<min_vertical_drains>(
          "_min_vertical_drains",
          R"(Lowest level for vertical drains [m]: the highest point of the bottom of the geometry.

Raises ModelError if there is no layer.)")
          .returning("float"));
  body.add(
      state,
      host::property<max_vertical_drains>(
          "_max_vertical_drains",
          R"(Highest level for vertical drains [m]: the highest point of the top of the geometry.

Raises ModelError if there is no layer.)")
          .returning("float"));
}

}  // namespace dsettlement::geometry
