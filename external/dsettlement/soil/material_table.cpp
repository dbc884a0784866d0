#include "soil/material_table.hpp"

#include <algorithm>

#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/filled.hpp"
#include "host/sequence.hpp"
#include "host/text.hpp"
#include "soil/material.hpp"
#include "soil/name_length.hpp"

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
  std::ranges::transform(vocabulary, end, &SoilParameter::parameter);
  return all;
}();

Ref create_material(State& state, Arguments arguments) {
  const auto [self, name, gam_dry, gam_wet, color] = arguments.first<first_of_vocabulary>();
  const State::Names& names = state.names;

  if (host::contains(host::get(self, names.private_materials), name)) {
    state.toolkit.refuse("Material with name '{}' already exists", {name});
  }
  if (host::length(name) > longest_name) {
    state.toolkit.refuse("Name can be max. {} characters long", {host::integer(longest_name)});
  }

  // Most parameters are left to their defaults, so a copy of those and the few that differ is
  // quicker than entering them one by one.
  const Ref soil_parameters = Ref::steal(PyDict_Copy(state.default_vocabulary.get()));
  for (std::size_t i = 0; i < vocabulary.size(); ++i) {
    const host::Handle value = arguments[first_of_vocabulary + i];
    if (value == state.vocabulary_defaults[i].get()) continue;
    host::check(PyDict_SetItem(soil_parameters.get(), state.vocabulary_keys[i].get(), value));
  }
  const Ref material = make_material(state, gam_dry, gam_wet, color, soil_parameters);
  host::check(
      PyObject_SetItem(host::get(self, names.private_materials).get(), name, material.get()));
  return host::none();
}

Ref serialize_materials(State& state, Arguments arguments) {
  const Ref pairs =
      Ref::steal(PyMapping_Items(host::get(arguments[0], state.names.private_materials).get()));
  host::check(PyList_Sort(pairs.get()));
  host::List materials;
  for (const Ref& pair : host::Elements(pairs)) {
    materials.append(
        host::call_method(host::item(pair, 1), state.names.private_serialize, host::item(pair, 0)));
  }
  return materials.done();
}

constexpr auto documentation_of_create =
    host::filled(R"(Create a material, for layers to refer to by its name.

name: name of the material, at most {} characters; must be new in this model.
gam_dry: unit weight above the phreatic level [kN/m³].
gam_wet: unit weight below the phreatic level [kN/m³].
color: colour for visualisation in D-Settlement; a random one if it is not given.

All further soil parameters go by keyword, and to the input file as they are; the integers
among them are D-Settlement's own codes and switches.

initial_void_ratio: initial void ratio [-].
cohesion: cohesion [kPa].
phi: angle of internal friction [deg].
precon_isotache_type, precon_koppejan_type: what gives the preconsolidation pressure: 0 for ocr,
    1 for pc, 2 for pop. The first counts for NEN_BJERRUM and ISOTACHE, the second for
    NEN_KOPPEJAN.
use_equivalent_age: 1 if the equivalent age counts, 0 if not.
equivalent_age: equivalent age [days].
pc: preconsolidation pressure [kPa].
ocr: overconsolidation ratio [-].
pop: pre-overburden pressure [kPa].
limit_stress: limit stress [kPa].
drained: 1 if the layer drains, without consolidation; 0 if it consolidates.
ap_as_approximation_by_cp_cs: 1 if ap and asec follow from cp and cs, 0 if not.
cv: vertical consolidation coefficient [m²/s].
permeability_ver: vertical permeability [m/day].
permeability_hor_factor: ratio of horizontal to vertical permeability [-].
permeability_strain_modulus: permeability strain modulus [-].
storage_type: what DARCY takes of these: 0 for cv, 1 for permeability_ver, 2 for permeability_ver
    that falls with strain by permeability_strain_modulus.
use_prob_defaults: 1 if the defaults hold for what follows of a parameter's spread, 0 if not.
std_...: standard deviation of the parameter of that name, in its unit.
dist_...: its distribution, for a reliability analysis, as a code of D-Settlement.
cor_...: correlation of two parameters [-].
cp, cp1: primary compression below and above the preconsolidation pressure [-].
cs, cs1: secular compression below and above it [-].
ap, asec: primary and secular swelling [-].
car, ca: secondary compression when reloading and at first loading [-].
comp_ratio: what NEN_BJERRUM takes: 1 for the ratios, 0 for the indices, with initial_void_ratio.
r_ratio, c_ratio, s_ratio: reloading, compression and swelling ratio [-].
cr_index, cc_index, csw_index: the same as indices [-].
pri_comp_index, sec_comp_index, sec_comp_rate: isotache parameters a, b and c [-].
horizontal_behaviour_type: how soil behaves horizontally, as a code of D-Settlement.
elasticity: elasticity, for the horizontal behaviour [kPa].
default_elasticity: 1 if the default elasticity counts, 0 if not.

Raises ModelError if the name exists already or is too long; the model then stays as it was.)",
                 longest_name);

}  // namespace

void add_materials(host::ClassBody& body, State& state) {
  body.add(state,
           host::method<create_material>("create_material", parameters, documentation_of_create));
}

void add_material_documents(host::ClassBody& body, State& state) {
  body.add(state, host::method<serialize_materials>(
                      "_serialize_materials",
                      "Return a new list with the document of each material, sorted by name.")
                      .returning("list[dict[str, Any]]"));
}

}  // namespace dsettlement::soil
