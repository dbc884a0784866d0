#include "soil/material.hpp"

#include "host/class_body.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter init_parameters[] = {host::self,
                                         {"gam_dry", "float"},
                                         {"gam_wet", "float"},
                                         {"color", "Color", host::no_object},
                                         host::keyword_rest("kwargs", "Any")};

void fill(State& state, Handle self, Handle gam_dry, Handle gam_wet, Handle color, Handle kwargs) {
  const State::Names& names = state.names;
  host::set(self, names.gam_dry, gam_dry);
  host::set(self, names.gam_wet, gam_wet);
  host::set(self, names.private_color,
            host::is_true(color) ? host::share(color)
                                 : host::call_method(state.toolkit.color.now(), names.random));
  host::set(self, names.private_kwargs, kwargs);
}

Ref init(State& state, Arguments arguments) {
  const auto [self, gam_dry, gam_wet, color, kwargs] =
      arguments.first<std::size(init_parameters)>();
  fill(state, self, gam_dry, gam_wet, color, kwargs);
  return host::none();
}

constexpr Parameter serialize_parameters[] = {host::self, {"name", "str"}};

Ref serialize(State& state, Arguments arguments) {
  const auto [self, name] = arguments.first<std::size(serialize_parameters)>();
  const State::Names& names = state.names;
  return host::Mapping()
      .put(names.name, name)
      .put(names.color, host::get(host::get(self, names.color), names.deltares))
      .put(names.gam_dry, host::get(self, names.gam_dry))
      .put(names.gam_wet, host::get(self, names.gam_wet))
      .update(host::get(self, names.private_kwargs))
      .done();
}

}  // namespace

Ref make_material(State& state, Handle gam_dry, Handle gam_wet, Handle color, Handle parameters) {
  const Ref type = state.material.now();
  if (state.material_constructor.is_still_that_of(type)) {
    Ref material = host::allocate(type);
    fill(state, material, gam_dry, gam_wet, color, parameters);
    return material;
  }
  const Ref positional =
      Ref::steal(PyTuple_Pack(2, static_cast<PyObject*>(gam_dry), static_cast<PyObject*>(gam_wet)));
  const Ref keywords = host::Mapping().put(state.names.color, color).update(parameters).done();
  return Ref::steal(PyObject_Call(type.get(), positional.get(), keywords.get()));
}

void define_material(host::Module& module, State& state) {
  host::ClassBody body(module, "_Material",
                       R"(A record of soil parameters, which layers refer to by its name.

gam_dry: unit weight above the phreatic level [kN/m³].
gam_wet: unit weight below the phreatic level [kN/m³].)");
  body.declare("gam_dry", "float");
  body.declare("gam_wet", "float");
  body.add(state, host::method<init>("__init__", init_parameters,
                                     R"(Keep the parameters; nothing is checked.

gam_dry: unit weight above the phreatic level [kN/m³].
gam_wet: unit weight below the phreatic level [kN/m³].
color: colour for visualisation; a random one if it is not given.
kwargs: all other soil parameters, by their keys in the document.)"));
  body.add(state, host::getter<State, &State::Names::private_color>(
                      "color", "Colour for visualisation in D-Settlement.")
                      .returning("Color"));
  body.add(state,
           host::method<serialize>("_serialize", serialize_parameters,
                                   R"(Return the material's part of the document as a new mapping.

name: the name of the material, which the record does not know.)")
               .returning("dict[str, Any]"));
  state.material = body.make();
  state.material_constructor.remember(state.material.original());
}

}  // namespace dsettlement::soil
