#include "model/document.hpp"

#include "host/containers.hpp"
#include "host/elements.hpp"

namespace dsettlement::model {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

// The template-filling service gets both enumerations as bare integers.
Ref value_of(State& state, Handle self, const host::Name& attribute) {
  return host::get(host::get(self, attribute), state.names.value);
}

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  const State::Names::Keys& keys = names.keys;

  const auto strain_type = [&]() -> const host::Name& {
    return host::is_true(host::get(self, names.private_natural_strain)) ? keys.natural
                                                                        : keys.linear;
  };
  host::Mapping document;
  document.put(keys.calculation_model, value_of(state, self, names.private_calculation_model))
      .put(keys.consolidation_model, value_of(state, self, names.private_consolidation_model))
      .put(keys.strain_type, strain_type())
      .put(keys.maintain_profile, host::get(self, names.private_maintain_profile))
      .put(keys.profile_time, host::get(self, names.private_profile_time))
      .put(keys.profile_unit_weight_above, host::get(self, names.private_profile_unit_weight_above))
      .put(keys.profile_unit_weight_below, host::get(self, names.private_profile_unit_weight_below))
      .put(keys.end_of_settlement_calculation,
           host::get(self, names.private_end_of_settlement_calculation))
      .put(keys.verticals_discretization, host::get(self, names.private_verticals_discretization))
      .put(keys.verticals_z_coordinate, host::get(self, names.private_verticals_z_coordinate))
      .put(keys.stress_distribution_loads, host::get(self, names.private_stress_distribution_loads))
      .put(keys.has_vertical_drains, host::get(self, names.private_has_vertical_drains))
      .put(keys.soils, host::call_method(self, names.private_serialize_materials))
      .put(keys.verticals, host::call_method(self, names.private_serialize_verticals))
      .put(keys.non_uniform_loads,
           host::call_method(self, names.private_serialize_non_uniform_loads))
      .put(keys.other_loads, host::call_method(self, names.private_serialize_other_loads))
      .put(keys.residual_times, host::get(self, names.private_calculation_times))
      .put(keys.vertical_drain, host::call_method(host::get(self, names.private_vertical_drain),
                                                  names.private_serialize));
  return document.done();
}

Ref serialize_verticals(State& state, Arguments arguments) {
  host::List verticals;
  const Ref all = host::get(arguments[0], state.names.private_verticals);
  for (const Ref& vertical : host::Elements(all)) {
    verticals.append(host::call_method(vertical, state.names.private_serialize));
  }
  return verticals.done();
}

}  // namespace

void add_document(host::ClassBody& body, State& state) {
  body.add(state,
           host::method<serialize>(
               "_serialize",
               R"(Return the part of the model document that all models share, as a new mapping.

A concrete model adds its geometry behind these keys. The model stays as it is.)")
               .returning("dict[str, Any]")
               .abstract());
}

void add_vertical_documents(host::ClassBody& body, State& state) {
  body.add(state,
           host::method<serialize_verticals>(
               "_serialize_verticals", "Return a new list with the document of each vertical.")
               .returning("list[dict[str, Any]]"));
}

}  // namespace dsettlement::model
