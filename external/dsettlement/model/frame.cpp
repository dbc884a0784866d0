#include "model/frame.hpp"

#include "analysis/input_generation.hpp"
#include "host/class_body.hpp"
#include "model/calculation_options.hpp"
#include "model/calculation_times.hpp"
#include "model/document.hpp"
#include "soil/defaults.hpp"
#include "soil/drain_limits.hpp"
#include "soil/load_table.hpp"
#include "soil/material_table.hpp"

namespace dsettlement::model {

using host::Arguments;
using host::Ref;

namespace {

// The copies keep the caller from changing the model's own containers.
Ref materials(State& state, Arguments arguments) {
  return host::call_method(host::get(arguments[0], state.names.private_materials),
                           state.names.copy);
}

Ref verticals(State& state, Arguments arguments) {
  return host::list_of(host::get(arguments[0], state.names.private_verticals));
}

struct Attribute {
  const char* name;
  const char* type;
};

// In the order in which the constructor sets them.
constexpr Attribute attributes[] = {
    {"_calculation_model", "CalculationModel"},
    {"_consolidation_model", "ConsolidationModel"},
    {"_natural_strain", "bool"},
    {"_reliability_analysis", "bool"},
    {"_fit_for_settlement_plate", "bool"},
    {"_horizontal_displacements", "bool"},
    {"_limits", "tuple[float, float]"},
    {"_water_unit_weight", "float"},
    {"_verticals_discretization", "int"},
    {"_verticals_z_coordinate", "float"},
    {"_maintain_profile", "bool"},
    {"_profile_time", "int"},
    {"_profile_unit_weight_above_phreatic_level", "float"},
    {"_profile_unit_weight_below_phreatic_level", "float"},
    {"_end_of_settlement_calculation", "int"},
    {"_stress_distribution_loads", "bool"},
    {"_has_vertical_drains", "bool"},
    {"_vertical_drain", "VerticalDrain"},
    {"_materials", "dict[str, _Material]"},
    {"_verticals", "list[_Vertical]"},
    {"_non_uniform_loads", "OrderedDict[str, _NonUniformLoad]"},
    {"_other_loads", "dict[str, _OtherLoad]"},
    {"_calculation_times", "list[int]"},
};

Ref left_to_concrete_models(State& /*state*/, Arguments /*arguments*/) {
  return host::none();
}

}  // namespace

void define_model(host::Module& module, State& state, soil::State& soil,
                  analysis::State& analysis) {
  host::ClassBody body(
      module, "_Model",
      R"(What one-dimensional and two-dimensional models have in common: calculation options,
materials, loads, verticals, calculation times and the generation of the input file.

Units: metres for levels and coordinates, days for times, kN/m³ for unit weights, kPa for
pressures. Values are kept as given; nothing is converted.)");
  body.add("_SOIL_VERSION", host::integer(1005));
  body.add("_GEOMETRY_VERSION", host::integer(1000));
  body.add("_DSETTLEMENT_VERSION", host::integer(1007));
  body.add("_DEFAULT_MATERIALS", soil::default_materials(soil));
  body.add("_DEFAULT_VERTICAL_DRAIN", soil::default_vertical_drain(soil));

  for (const Attribute& attribute : attributes) body.declare(attribute.name, attribute.type);
  add_calculation_options(body, state);
  body.add(state, host::property<materials>(
                      "materials", "The materials by name, as a new mapping of str to _Material.")
                      .returning("dict[str, _Material]"));
  body.add(state, host::property<verticals>("verticals", "The verticals, as a new list.")
                      .returning("list[_Vertical]"));
  soil::add_materials(body, soil);
  soil::add_uniform_loads(body, soil);
  add_calculation_times(body, state);
  analysis::add_input_generation(body, analysis);
  soil::add_drain_limits(body, soil);
  soil::add_other_loads(body, soil);
  add_document(body, state);
  soil::add_material_documents(body, soil);
  add_vertical_documents(body, state);
  soil::add_load_documents(body, soil);
  body.add(state, host::property<left_to_concrete_models>("_min_vertical_drains",
                                                          "Lowest level for vertical drains [m].")
                      .returning("float")
                      .abstract());
  body.add(state, host::property<left_to_concrete_models>("_max_vertical_drains",
                                                          "Highest level for vertical drains [m].")
                      .returning("float")
                      .abstract());
  state.model = body.make_with(state.toolkit.abstract_metaclass.original());
}

}  // namespace dsettlement::model
