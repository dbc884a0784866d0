#include "geometry/layering.hpp"

#include "geometry/codes.hpp"
#include "geometry/index/index.hpp"
#include "host/containers.hpp"
#include "host/filled.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter parameters[] = {host::self,
                                    {"boundary_top", "list[_Point]"},
                                    {"material", "str"},
                                    {"pl_line_top", "_PlLine | int"},
                                    {"pl_line_bottom", "_PlLine | int"}};

// Only integers are checked: what else stands in the place of a pl-line shows in the document.
void check_code(const State& state, Handle pl_line, const char* name) {
  if (host::is_instance(pl_line, reinterpret_cast<PyObject*>(&PyLong_Type)) &&
      !host::compare(pl_line, Py_EQ, host::integer(no_pressure)) &&
      !host::compare(pl_line, Py_EQ, host::integer(interpolation))) {
    state.toolkit.refuse(
        "'{}' must be {} or {} or of type _PlLine created with 'create_pl_line'",
        {host::characters_of(name), host::integer(no_pressure), host::integer(interpolation)});
  }
}

Ref create_layer(State& state, Arguments arguments) {
  const auto [self, points, material, pl_line_top, pl_line_bottom] =
      arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;

  if (!host::contains(host::get(self, names.private_materials), material)) {
    state.toolkit.refuse("Material with name '{}' does not exist", {material});
  }
  check_code(state, pl_line_top, "pl_line_top");
  check_code(state, pl_line_bottom, "pl_line_bottom");
  if (!host::is_true(host::get(self, names.private_layers)) &&
      host::compare(pl_line_bottom, Py_EQ, host::integer(interpolation))) {
    state.toolkit.refuse(
        "Interpolation value for pl-line ({}) cannot be assigned to bottom of geometry.",
        {host::integer(interpolation)});
  }

  const Ref top = host::call_method(self, names.private_create_boundary, points);
  const Ref layers = host::get(self, names.private_layers);
  const Ref bottom = host::is_true(layers) ? host::get(host::item(layers, -1), names.boundary_top)
                                           : host::item(boundaries_of(state, self), 0);
  if (host::compare(top, Py_EQ, bottom)) {
    state.toolkit.refuse("Boundary top is similar to boundary bottom.");
  }
  const Ref layer =
      host::call(state.layer.now(), top, bottom, material, pl_line_top, pl_line_bottom);
  host::call_method(host::get(self, names.private_layers), names.append, layer);
  return layer;
}

constexpr auto documentation =
    host::filled(R"(Define layers from bottom to top.

boundary_top: points of the boundary at the top, made with create_point, from the left limit
    of the model to the right; two points may share an x coordinate.
material: name of the material, made with create_material or one of the default materials.
pl_line_top, pl_line_bottom: pl-line at the top and at the bottom, made with create_pl_line,
    or {} for no pressure, or {} for interpolation, which neither the bottom of the first layer
    nor the top of the last may have.

Returns the new layer. It lies on the layer created before it, the first one on the lowest
boundary of the model.

Raises ModelError if the material does not exist, if a pl-line is another integer than {} and
{}, if the bottom of the first layer is {}, or if the points do not run from limit to limit
or not from left to right; the model then stays as it is. Raises ModelError too if top and
bottom are the same; a new boundary is kept then.)",
                 no_pressure, interpolation, no_pressure, interpolation, interpolation);

}  // namespace

void add_layering(host::ClassBody& body, State& state) {
  body.add(
      state,
      host::method<create_layer>("create_layer", parameters, documentation).returning("_Layer"));
}

}  // namespace dsettlement::geometry
