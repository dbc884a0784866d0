#include "geometry/model_2d.hpp"

#include "geometry/chains.hpp"
#include "geometry/document_2d.hpp"
#include "geometry/index/index.hpp"
#include "geometry/layering.hpp"
#include "geometry/make.hpp"
#include "geometry/validation_2d.hpp"
#include "geometry/verticals.hpp"
#include "host/class_body.hpp"
#include "host/elements.hpp"
#include "host/filled.hpp"
#include "host/unpack.hpp"
#include "model/options.hpp"
#include "soil/non_uniform_load.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;
namespace options = model::options;

namespace {

constexpr Parameter init_parameters[] = {
    host::self,
    options::calculation_model,
    options::consolidation_model,
    {"boundary_bottom", "list[tuple[float, float]]"},
    options::create_default_materials,
    options::natural_strain,
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

void make_containers(const State& state, Handle self) {
  const State::Names& names = state.names;
  host::set(self, names.private_points, host::List().done());
  host::set(self, names.private_pl_lines, host::List().done());
  host::set(self, names.private_phreatic_line, host::integer(0));
  host::set(self, names.private_boundaries, host::List().done());
  host::set(self, names.private_layers, host::List().done());
}

void create_bottom(const State& state, Handle self, Handle boundary_bottom) {
  const State::Names& names = state.names;
  host::List points;
  for (const Ref& point : host::Elements(boundary_bottom)) {
    const auto [x, y] = host::unpack<2>(point);
    points.append(host::call_method(self, names.create_point, x, y));
  }
  host::call_method(self, names.private_create_boundary, points.done());
}

Ref init(State& state, Arguments arguments) {
  const auto [self, calculation_model, consolidation_model, boundary_bottom,
              create_default_materials] = arguments.first<5>();
  options::hand_on(host::super(state.model_2d.original(), self, state.names.init),
                   {calculation_model, consolidation_model, create_default_materials},
                   init_parameters, arguments);
  make_containers(state, self);
  create_bottom(state, self, boundary_bottom);
  return host::none();
}

constexpr Parameter point_parameters[] = {host::self, {"x", "float"}, {"y", "float"}};

Ref create_point(State& state, Arguments arguments) {
  const auto [self, x, y] = arguments.first<std::size(point_parameters)>();
  Ref point = make_point(state, x, y);
  const Ref points = host::get(self, state.names.private_points);
  if (PyList_CheckExact(points.get()) != 0) {
    host::check(PyList_Append(points.get(), point.get()));
  } else {
    host::call_method(points, state.names.append, point);
  }
  return point;
}

constexpr const char* class_documentation =
    R"(Model for a 2D D-Settlement analysis.

The soil is a cross-section between two limits: layers from bottom to top, each between two
boundaries, and pl-lines for the pressures in them. Points are created one list per boundary
or pl-line; what repeats is folded together.

    model = Model2D(CalculationModel.NEN_KOPPEJAN, ConsolidationModel.TERZAGHI,
                    [(0.0, 0.0), (100.0, 0.0)])
    model.create_material("Clay", 14.0, 14.0, cp=30, cp1=10, cs=300, cs1=100, cv=1e-7)
    pl_line = model.create_pl_line(
        [model.create_point(0.0, 4.0), model.create_point(100.0, 4.0)], is_phreatic=True)
    top = [model.create_point(x, y) for x, y in [(0.0, 5.0), (50.0, 6.0), (100.0, 5.0)]]
    model.create_layer(top, "Clay", pl_line, pl_line)
    model.create_vertical(50.0)
    model.create_non_uniform_load("dam", [(0.0, 5.0), (50.0, 8.0), (100.0, 5.0)])
    model.set_calculation_times(100, 1000, 10000)
    input_file = model.generate_input_file()

Units: metres for coordinates, days for times, kN/m³ for unit weights, kPa for pressures.
Values are kept as given; nothing is converted.)";

constexpr auto init_documentation =
    host::filled(R"(Make a model with its bottom boundary and no layer.

calculation_model: specifies which calculation model is used.
consolidation_model: specifies which consolidation model is used.
boundary_bottom: the bottom boundary of the geometry, as x-y pairs from the left limit to
    the right [m].
create_default_materials: start with default materials or none.
natural_strain: if False -> linear strain; only NEN_KOPPEJAN listens to it.
limits: left and right x limit of the geometry [m].
water_unit_weight: in [kN/m³].
verticals_discretization: number of elements along a vertical, from {} to {}.
verticals_z_coordinate: z coordinate of the verticals [m].
maintain_profile: whether the profile is maintained by superelevation.
profile_time: time of the superelevation [days], from 0 to {} and not above
    end_of_settlement_calculation.
profile_unit_weight_above_phreatic_level, profile_unit_weight_below_phreatic_level:
    unit weight of the superelevation [kN/m³].
end_of_settlement_calculation: [days]; no calculation time may lie behind it.
stress_distribution_loads: True for "Simulate", False for "None".
vertical_drain: parameters for vertical drains, or None (default) to disable option.

Raises ModelError if an option is out of its range or if the bottom boundary does not run
from limit to limit and from left to right, KeyError if calculation_model is not a member of
CalculationModel, IndexError if boundary_bottom is empty, ValueError if one of its entries is
no pair.)",
                 options::fewest_elements, options::most_elements, options::latest_profile_time);

constexpr const char* create_point_documentation =
    R"(Create a point for a boundary or a pl-line.

x: x coordinate [m].
y: y coordinate [m].

Returns the new point. Equal points may be created; the first of them is the one that is
referred to in the input file.)";

}  // namespace

void define_model_2d(host::Module& module, State& state, soil::State& soil) {
  host::ClassBody body(module, "Model2D", class_documentation);
  body.add(state, host::method<init>("__init__", init_parameters, init_documentation));
  body.declare("_points", "list[_Point]");
  body.declare("_pl_lines", "list[_PlLine]");
  body.declare("_phreatic_line", "int");
  body.declare("_boundaries", "list[_Boundary]");
  body.declare("_layers", "list[_Layer]");
  add_index(module, state, body);
  body.add(state,
           host::method<create_point>("create_point", point_parameters, create_point_documentation)
               .returning("_Point"));
  add_chains(body, state);
  add_layering(body, state);
  add_verticals(body, state);
  soil::add_non_uniform_loads(body, soil);
  add_validation(body, state);
  add_document(body, state);
  state.model_2d = body.make({state.model.model.original()});
  remember_model_class(state, state.model_2d.original());
}

}  // namespace dsettlement::geometry
