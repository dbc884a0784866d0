#include "model/calculation_options.hpp"

#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/filled.hpp"
#include "host/unpack.hpp"
#include "model/options.hpp"

namespace dsettlement::model {

using host::Arguments;
using host::flag;
using host::Handle;
using host::keyword_only;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter parameters[] = {
    host::self,
    options::calculation_model,
    options::consolidation_model,
    options::create_default_materials,
    options::natural_strain,
    keyword_only("reliability_analysis", "bool", flag(false)),
    keyword_only("fit_for_settlement_plate", "bool", flag(false)),
    keyword_only("horizontal_displacements", "bool", flag(false)),
    options::limits,
    options::water_unit_weight,
    options::verticals_discretization,
    options::verticals_z_coordinate,
    options::maintain_profile,
    options::profile_time,
    options::profile_unit_weight_above_phreatic_level,
    options::profile_unit_weight_below_phreatic_level,
    options::end_of_settlement_calculation,
    options::stress_distribution_loads,
    options::vertical_drain,
};

// Only NEN-Koppejan leaves the choice of strain to the caller. The lookup is what refuses a
// calculation model that is none.
Ref strain_rule(State& state, Handle natural_strain) {
  const State::Names& names = state.names;
  const Ref models = state.calculation_model.now();
  return host::Mapping()
      .put(host::get(models, names.nen_bjerrum), Py_False)
      .put(host::get(models, names.isotache), Py_True)
      .put(host::get(models, names.nen_koppejan), natural_strain)
      .done();
}

void set_vertical_drain(State& state, Handle self, Handle vertical_drain) {
  const State::Names& names = state.names;
  const bool given = host::is_true(vertical_drain);
  host::set(self, names.private_has_vertical_drains, host::boolean(given));
  host::set(
      self, names.private_vertical_drain,
      given ? host::share(vertical_drain) : host::get(self, names.private_default_vertical_drain));
}

void make_containers(State& state, Handle self) {
  const State::Names& names = state.names;
  host::set(self, names.private_materials, host::Mapping().done());
  host::set(self, names.private_verticals, host::List().done());
  host::set(self, names.private_non_uniform_loads, host::call(state.toolkit.ordered_dict.now()));
  host::set(self, names.private_other_loads, host::Mapping().done());
  host::set(self, names.private_calculation_times, host::List().done());
}

void enter_default_materials(State& state, Handle self) {
  const State::Names& names = state.names;
  const Ref defaults = host::get(self, names.private_default_materials);
  for (const Ref& entry : host::items_of(defaults)) {
    const Ref name = host::item(entry, 0);
    const Ref material = host::item(entry, 1);
    const auto [gam_dry, gam_wet, color] = host::unpack<3>(material);
    static_cast<void>(host::call_with(host::get(self, names.create_material),
                                      {name, gam_dry, gam_wet}, {{names.color, color}}));
  }
}

constexpr auto refusal_of_elements =
    host::filled("verticals_discretization must be between {} and {}", options::fewest_elements,
                 options::most_elements);
constexpr auto refusal_of_profile_time =
    host::filled("profile_time must be between 0 and {} and <= end_of_settlement_calculation",
                 options::latest_profile_time);

Ref init(State& state, Arguments arguments) {
  const auto [self, calculation_model, consolidation_model, create_default_materials,
              natural_strain, reliability_analysis, fit_for_settlement_plate,
              horizontal_displacements, limits, water_unit_weight, verticals_discretization,
              verticals_z_coordinate, maintain_profile, profile_time, profile_unit_weight_above,
              profile_unit_weight_below, end_of_settlement_calculation, stress_distribution_loads,
              vertical_drain] = arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;

  const Ref rule = strain_rule(state, natural_strain);
  host::set(self, names.private_calculation_model, calculation_model);
  host::set(self, names.private_consolidation_model, consolidation_model);
  host::set(self, names.private_natural_strain, host::item(rule, calculation_model));
  host::set(self, names.private_reliability_analysis, reliability_analysis);
  host::set(self, names.private_fit_for_settlement_plate, fit_for_settlement_plate);
  host::set(self, names.private_horizontal_displacements, horizontal_displacements);
  host::set(self, names.private_limits, limits);
  host::set(self, names.private_water_unit_weight, water_unit_weight);

  if (!host::between(options::fewest_elements, verticals_discretization, options::most_elements)) {
    state.toolkit.refuse(refusal_of_elements);
  }
  host::set(self, names.private_verticals_discretization, verticals_discretization);
  host::set(self, names.private_verticals_z_coordinate, verticals_z_coordinate);
  host::set(self, names.private_maintain_profile, maintain_profile);

  if (!host::between(0L, profile_time, options::latest_profile_time) ||
      !host::compare(profile_time, Py_LE, end_of_settlement_calculation)) {
    state.toolkit.refuse(refusal_of_profile_time);
  }
  host::set(self, names.private_profile_time, profile_time);
  host::set(self, names.private_profile_unit_weight_above, profile_unit_weight_above);
  host::set(self, names.private_profile_unit_weight_below, profile_unit_weight_below);
  host::set(self, names.private_end_of_settlement_calculation, end_of_settlement_calculation);
  host::set(self, names.private_stress_distribution_loads, stress_distribution_loads);

  set_vertical_drain(state, self, vertical_drain);
  make_containers(state, self);
  if (host::is_true(create_default_materials)) enter_default_materials(state, self);
  return host::none();
}

constexpr auto documentation =
    host::filled(R"(Check and keep the calculation options, and enter the default materials.

calculation_model: the calculation model.
consolidation_model: the consolidation model; not checked here.
create_default_materials: whether to start with the default materials or with none.
natural_strain: natural strain if true, linear strain if false; only NEN_KOPPEJAN listens.
reliability_analysis, fit_for_settlement_plate, horizontal_displacements: kept, and part of
    no document.
limits: left and right limit of the model [m].
water_unit_weight: [kN/m³]; kept, and part of no document.
verticals_discretization: number of elements along a vertical, from {} to {}.
verticals_z_coordinate: z coordinate of the verticals [m].
maintain_profile: whether the profile is maintained by superelevation.
profile_time: time of the superelevation [days], from 0 to {} and not above
    end_of_settlement_calculation.
profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
    unit weight of the superelevation [kN/m³].
end_of_settlement_calculation: [days].
stress_distribution_loads: True for "Simulate", False for "None".
vertical_drain: the vertical drains, or None for a model without.

Raises ModelError if an option is out of its range, KeyError if calculation_model is not a
member of CalculationModel.)",
                 options::fewest_elements, options::most_elements, options::latest_profile_time);

}  // namespace

void add_calculation_options(host::ClassBody& body, State& state) {
  body.add(state, host::method<init>("__init__", parameters, documentation).abstract());
}

}  // namespace dsettlement::model
