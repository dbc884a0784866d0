#include "geometry/model_1d.hpp"

#include "host/class_body.hpp"
#include "host/elements.hpp"
#include "host/filled.hpp"
#include "host/text.hpp"
#include "model/options.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::no_object;
using host::Parameter;
using host::Ref;
namespace options = model::options;

namespace {

constexpr long one_dimensional = 0;
constexpr double top_of_new_model = 0.0;
constexpr double bottom_of_new_model = -10.0;

constexpr Parameter init_parameters[] = {
    host::self,
    options::calculation_model,
    options::consolidation_model,
    options::create_default_materials,
    options::natural_strain,
    options::water_unit_weight,
    options::verticals_discretization,
    options::verticals_z_coordinate,
    options::maintain_profile,
    options::profile_unit_weight_above_phreatic_level,
    options::profile_unit_weight_below_phreatic_level,
    options::end_of_settlement_calculation,
    options::vertical_drain,
};

Ref init(State& state, Arguments arguments) {
  const auto [self, calculation_model, consolidation_model, create_default_materials] =
      arguments.first<4>();
  const State::Names& names = state.names;
  options::hand_on(host::super(state.model_1d.original(), self, names.init),
                   {calculation_model, consolidation_model, create_default_materials},
                   init_parameters, arguments);

  host::List layers;
  layers.append(
      Ref::steal(PyTuple_Pack(2, host::real(top_of_new_model).get(), names.undetermined.get())));
  host::set(self, names.private_geometry,
            host::call(state.geometry_1d.now(), host::real(bottom_of_new_model), layers.done()));
  host::List verticals;
  verticals.append(host::call(state.model.vertical.now(), host::real(0.0)));
  host::set(self, names.private_verticals, verticals.done());
  return host::none();
}

Ref of_geometry(State& state, Handle self, const host::Name& attribute) {
  return host::get(host::get(self, state.names.private_geometry), attribute);
}

Ref bottom_level(State& state, Arguments arguments) {
  return of_geometry(state, arguments[0], state.names.bottom_level);
}

Ref top_level(State& state, Arguments arguments) {
  return of_geometry(state, arguments[0], state.names.top_level);
}

Ref layers(State& state, Arguments arguments) {
  return of_geometry(state, arguments[0], state.names.layers);
}

Ref phreatic_level(State& state, Arguments arguments) {
  return of_geometry(state, arguments[0], state.names.phreatic_level);
}

constexpr Parameter update_parameters[] = {host::self,
                                           {"bottom_level", "float"},
                                           {"layers", "list[tuple[float, str]]"},
                                           {"phreatic_level", "float", no_object}};

Ref update_geometry(State& state, Arguments arguments) {
  const auto [self, bottom_level, layers, phreatic_level] =
      arguments.first<std::size(update_parameters)>();
  const State::Names& names = state.names;
  long position = 0;
  for (const Ref& layer : host::Elements(layers)) {
    ++position;
    const Ref material = host::item(layer, 1);
    if (!host::contains(host::get(self, names.private_materials), material)) {
      state.toolkit.refuse("Material with name '{}' does not exist (layer {})",
                           {material, host::integer(position)});
    }
  }
  host::set(self, names.private_geometry,
            host::call(state.geometry_1d.now(), bottom_level, layers, phreatic_level));
  return host::none();
}

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  return host::Mapping()
      .update(host::call(host::super(state.model_1d.original(), self, names.private_serialize)))
      .put(names.model_type, host::integer(one_dimensional))
      .put(names.geometry_key,
           host::call_method(host::get(self, names.private_geometry), names.private_serialize))
      .done();
}

constexpr auto class_documentation = host::filled(R"(Model for a 1D D-Settlement analysis.

The soil is one column: layers above a bottom level, with a phreatic level and one vertical at
x = 0. A new model has one layer of "Undetermined" from {} down to {} m.

    model = Model1D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI)
    model.create_material("my_mat", 21.0, 19.0, color=Color(0, 0, 0))
    model.update_geometry(-1.0, [(1.0, "Loam"), (0.0, "my_mat")], phreatic_level=-3.0)
    model.create_uniform_load("my_load", 0, 18.0, 0.5, 1.5)
    model.set_calculation_times(100, 1000, 10000)
    input_file = model.generate_input_file()

Units: metres for levels, days for times, kN/m³ for unit weights, kPa for pressures. Values
are kept as given; nothing is converted.)",
                                                  top_of_new_model, bottom_of_new_model);

constexpr auto init_documentation = host::filled(R"(Make a model with the default geometry.

calculation_model: specifies which calculation model is used.
consolidation_model: specifies which consolidation model is used.
create_default_materials: start with default materials or none.
natural_strain: if False -> linear strain; only NEN_KOPPEJAN listens to it.
water_unit_weight: in [kN/m³].
verticals_discretization: number of elements along the vertical, from {} to {}.
verticals_z_coordinate: z coordinate of the vertical [m].
maintain_profile: whether the profile is maintained by superelevation.
profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
    unit weight of the superelevation [kN/m³].
end_of_settlement_calculation: [days]; no calculation time may lie behind it.
vertical_drain: parameters for vertical drains, or None (default) to disable option.

Raises ModelError if an option is out of its range, KeyError if calculation_model is not a
member of CalculationModel.)",
                                                 options::fewest_elements, options::most_elements);

constexpr const char* update_documentation =
    R"( Overwrite the current (default if not updated before) geometry with the given data.

bottom_level: bottom level of the bottom-most layer [m].
layers: list of layers defined by top level [m] and material name, defined from top to bottom.
    Each material is created beforehand with create_material or is one of the default
    materials. The list is kept, not copied.
phreatic_level: [m], or None; not carried over from the geometry before.

Raises ModelError if a material does not exist, if there is no layer, if a top level is not
below that of the layer above, or if the lowest top level is not above the bottom level. The
model then keeps the geometry that it had.)";

}  // namespace

void define_model_1d(host::Module& module, State& state) {
  host::ClassBody body(module, "Model1D", class_documentation);
  body.add(state, host::method<init>("__init__", init_parameters, init_documentation));
  body.add(state, host::property<bottom_level>("bottom_level",
                                               "Bottom level of the bottom-most layer [m].")
                      .returning("float"));
  body.add(state, host::property<top_level>("top_level", "Top level of the first layer [m].")
                      .returning("float"));
  body.add(state,
           host::property<layers>(
               "layers",
               R"(Pairs of top level [m] and material name, from top to bottom, as a new list.)")
               .returning("list[tuple[float, str]]"));
  body.add(state, host::property<phreatic_level>("phreatic_level", "Phreatic level [m], or None.")
                      .returning("float | None"));
  body.add(state, host::method<update_geometry>("update_geometry", update_parameters,
                                                update_documentation));
  body.add(state, host::method<serialize>(
                      "_serialize",
                      R"(Return the model's document as a new mapping: what all models share, then
'model_type' and 'geometry'.)")
                      .returning("dict[str, Any]"));
  // Drains reach from the bottom to the top of the column; both levels are asked of the model, so
  // that a model with levels of its own is measured by them.
  body.add(state, host::getter<State, &State::Names::bottom_level>(
                      "_min_vertical_drains", "Lowest level for vertical drains [m]: the bottom.")
                      .returning("float"));
  body.add(state, host::getter<State, &State::Names::top_level>(
                      "_max_vertical_drains", "Highest level for vertical drains [m]: the top.")
                      .returning("float"));
  state.model_1d = body.make({state.model.model.original()});
}

}  // namespace dsettlement::geometry
