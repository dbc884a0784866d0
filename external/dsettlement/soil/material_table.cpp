#include "soil/material_table.hpp"

#include <algorithm>

#include "host/containers.hpp"
#include "host/text.hpp"
#include "soil/material.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter leading_parameters[] = {host::self,
                                            {"name", "str"},
                                            {"gam_dry", "float"},
                                            {"gam_wet", "float"},
                                            {"color", "Color", host::no_object}};
constexpr std::size_t first_of_vocabulary = std::size(leading_parameters);

constexpr auto parameters = [] {
  std::array<Parameter, first_of_vocabulary + vocabulary.size()> all{};
  const auto end = std::ranges::copy(leading_parameters, all.begin()).out;
  std::ranges::copy(vocabulary, end);
  return all;
}();

constexpr Py_ssize_t longest_name = 25;

Ref enter_material(State& state, Arguments arguments) {
  const auto [self, name, gam_dry, gam_wet, color] = arguments.first<first_of_vocabulary>();
  const State::Names& names = state.names;
  const auto model_error = state.toolkit.model_error.original();

  if (host::contains(host::get(self, names.materials), name)) {
    host::raise(model_error, host::text("Material with name '{}' already exists", {name}));
  }
  const Py_ssize_t length = PyObject_Size(name);
  if (length < 0) throw host::ErrorSet{};
  if (length > longest_name) {
    host::raise(model_error, "Name can be max. 25 characters long");
  }

  // Most parameters are left to their defaults, so a copy of those and the few that differ is
  // quicker than entering them one by one.
  Ref soil_parameters = Ref::steal(PyDict_Copy(state.default_vocabulary.get()));
  for (std::size_t i = 0; i < vocabulary.size(); ++i) {
    const host::Handle value = arguments[first_of_vocabulary + i];
    if (value == state.vocabulary_defaults[i].get()) continue;
    host::check(PyDict_SetItem(soil_parameters.get(), state.vocabulary_keys[i].get(), value));
  }
  const Ref material = make_material(state, gam_dry, gam_wet, color, std::move(soil_parameters));
  host::check(PyObject_SetItem(host::get(self, names.materials).get(), name, material.get()));
  return host::none();
}

Ref make_list(State& state, Arguments arguments) {
  const Ref pairs =
      Ref::steal(PyMapping_Items(host::get(arguments[0], state.names.materials).get()));
  host::check(PyList_Sort(pairs.get()));
  host::List materials;
  host::for_each(pairs, [&](const Ref& pair) {
    materials.append(
        host::call_method(host::item(pair, 1), state.names.serialize, host::item(pair, 0)));
  });
  return materials.done();
}

}  // namespace

constinit const host::Operation<State> create_material = host::method<enter_material>(
    "create_material", parameters,
    "Create a material, for layers to refer to by its name.\n\n"
    "name: name of the material, at most 25 characters; must be new in this model.\n"
    "gam_dry: unit weight above the phreatic level [kN/m³].\n"
    "gam_wet: unit weight below the phreatic level [kN/m³].\n"
    "color: colour for visualisation in D-Settlement; a random one if it is not given.\n\n"
    "All further soil parameters are given by keyword and go to the input file as they are:\n"
    "base values, standard deviations (std_...), distributions (dist_...), correlations "
    "(cor_...),\n"
    "compression parameters and horizontal behaviour. Stresses are in [kPa], permeabilities in\n"
    "[m/day], the consolidation coefficient cv in [m²/s]; codes are D-Settlement's own "
    "integers.\n\n"
    "Raises ModelError if the name exists already or is too long; the model then stays as it was.");

constinit const host::Operation<State> serialize_materials =
    host::method<make_list>("_serialize_materials",
                            "Return a new list with the document of each material, sorted by name.")
        .returning("list[dict[str, Any]]");

}  // namespace dsettlement::soil
