#include "geometry/geometry_1d.hpp"

#include "host/class_body.hpp"
#include "host/elements.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self,
                                         {"bottom_level", "float"},
                                         {"layers", "list[tuple[float, str]]"},
                                         {"phreatic_level", "float", host::no_object}};

Ref top_of(Handle layer) {
  return host::item(layer, 0);
}

void check_layers(const State& state, Handle bottom_level, Handle layers) {
  if (!host::is_true(layers)) state.toolkit.refuse("Provide at least 1 layer");
  Ref above;
  long position = 0;
  for (const Ref& layer : host::Elements(layers)) {
    ++position;
    const auto is_below = [&] {
      const Ref top = top_of(layer);
      return !host::compare(top, Py_GE, top_of(above));
    };
    if (above && !is_below()) {
      state.toolkit.refuse(
          R"(Each layer should have a top level lower than the layer above it (layer {}))",
          {host::integer(position)});
    }
    above = layer;
  }
  if (host::compare(top_of(host::item(layers, -1)), Py_LE, bottom_level)) {
    state.toolkit.refuse("Each layer should have a top level above the bottom level");
  }
}

Ref init(State& state, Arguments arguments) {
  const auto [self, bottom_level, layers, phreatic_level] =
      arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  check_layers(state, bottom_level, layers);
  host::set(self, names.private_bottom_level, bottom_level);
  host::set(self, names.private_layers, layers);
  host::set(self, names.phreatic_level, phreatic_level);
  return host::none();
}

Ref top_level(State& state, Arguments arguments) {
  return top_of(host::item(host::get(arguments[0], state.names.private_layers), 0));
}

Ref layers(State& state, Arguments arguments) {
  return host::list_of(host::get(arguments[0], state.names.private_layers));
}

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  return host::Mapping()
      .put(names.layers, host::get(self, names.private_layers))
      .put(names.bottom_level, host::get(self, names.private_bottom_level))
      .put(names.phreatic_level, host::get(self, names.phreatic_level))
      .done();
}

}  // namespace

void define_geometry_1d(host::Module& module, State& state) {
  host::ClassBody body(module, "_Geometry1D",
                       R"(A column of horizontal layers above a bottom level.

A layer reaches down to the top of the next one, the last to the bottom level.

phreatic_level: [m], or None.)");
  body.declare("phreatic_level", "float | None");
  body.add(state,
           host::method<init>(
               "__init__", init_parameters,
               R"(Check the order of the levels and keep the values, the list of layers included.

bottom_level: bottom level of the bottom-most layer [m].
layers: pairs of top level [m] and material name, from top to bottom.
phreatic_level: [m], or None; compared with nothing.

Raises ModelError if there is no layer or a level is not below the one above it.)"));
  body.add(state, host::getter<State, &State::Names::private_bottom_level>(
                      "bottom_level", "Bottom level of the bottom-most layer [m].")
                      .returning("float"));
  body.add(state, host::property<top_level>("top_level", "Top level of the first layer [m].")
                      .returning("float"));
  body.add(state,
           host::property<layers>(
               "layers",
               R"(Pairs of top level [m] and material name, from top to bottom, as a new list.)")
               .returning("list[tuple[float, str]]"));
  body.add(state,
           host::method<serialize>(
               "_serialize", R"(Return the geometry's part of the document as a new mapping.)")
               .returning("dict[str, Any]"));
  state.geometry_1d = body.make();
}

}  // namespace dsettlement::geometry
