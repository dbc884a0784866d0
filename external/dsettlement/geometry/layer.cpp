#include "geometry/layer.hpp"

#include "geometry/codes.hpp"
#include "host/class_body.hpp"
#include "host/filled.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {
    host::self,          {"boundary_top", "_Boundary"},    {"boundary_bottom", "_Boundary"},
    {"material", "str"}, {"pl_line_top", "_PlLine | int"}, {"pl_line_bottom", "_PlLine | int"}};

Ref init(State& state, Arguments arguments) {
  const auto [self, boundary_top, boundary_bottom, material, pl_line_top, pl_line_bottom] =
      arguments.first<std::size(init_parameters)>();
  const State::Names& names = state.names;
  host::set(self, names.private_boundary_top, boundary_top);
  host::set(self, names.private_boundary_bottom, boundary_bottom);
  host::set(self, names.private_material, material);
  host::set(self, names.private_pl_line_top, pl_line_top);
  host::set(self, names.private_pl_line_bottom, pl_line_bottom);
  return host::none();
}

}  // namespace

void define_layer(host::Module& module, State& state) {
  host::ClassBody body(
      module, "_Layer",
      R"(The soil between two boundaries, with the pressure at its top and at its bottom.

Each object is equal only to itself.)");
  static constexpr auto init_documentation =
      host::filled(R"(Keep the five values; nothing is checked.

boundary_top, boundary_bottom: boundaries at the top and at the bottom.
material: name of the material.
pl_line_top, pl_line_bottom: pl-line at the top and at the bottom, or {} for no pressure, or
    {} for interpolation.)",
                   no_pressure, interpolation);
  static constexpr auto top_documentation =
      host::filled("Pl-line at the top, or {} for no pressure, or {} for interpolation.",
                   no_pressure, interpolation);
  static constexpr auto bottom_documentation =
      host::filled("Pl-line at the bottom, or {} for no pressure, or {} for interpolation.",
                   no_pressure, interpolation);
  body.add(state, host::method<init>("__init__", init_parameters, init_documentation));
  body.add(state,
           host::getter<State, &State::Names::private_material>("material", "Name of the material.")
               .returning("str"));
  body.add(state, host::getter<State, &State::Names::private_boundary_top>("boundary_top",
                                                                           "Boundary at the top.")
                      .returning("_Boundary"));
  body.add(state, host::getter<State, &State::Names::private_boundary_bottom>(
                      "boundary_bottom", "Boundary at the bottom.")
                      .returning("_Boundary"));
  body.add(state,
           host::getter<State, &State::Names::private_pl_line_top>("pl_line_top", top_documentation)
               .returning("_PlLine | int"));
  body.add(state, host::getter<State, &State::Names::private_pl_line_bottom>("pl_line_bottom",
                                                                             bottom_documentation)
                      .returning("_PlLine | int"));
  state.layer = body.make();
}

}  // namespace dsettlement::geometry
