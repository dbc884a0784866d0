#include "soil/defaults.hpp"

#include "host/containers.hpp"

namespace dsettlement::soil {

using host::Ref;

namespace {

struct DefaultMaterial {
  const char* name;
  double gam_dry;
  double gam_wet;
  long color;
};

// Gravel and sand weigh the same, and "Undetermined" next to nothing, on purpose.
constexpr DefaultMaterial materials[] = {
    {"Dense Sand", 19.0, 21.0, 15728396},   {"Gravel", 18.0, 20.0, 5244889},
    {"Loam", 20.0, 20.0, 13407356},         {"Loose Sand", 17.0, 19.0, 42495},
    {"Medium Clay", 17.0, 17.0, 11141025},  {"Muck", 11.0, 11.0, 4163021},
    {"Peat", 12.0, 12.0, 7077877},          {"Sand", 18.0, 20.0, 851951},
    {"Soft Clay", 14.0, 14.0, 16575398},    {"Stiff Clay", 19.0, 19.0, 2763429},
    {"Undetermined", 0.01, 0.02, 16777215},
};

}  // namespace

Ref default_materials(const State& state) {
  host::Mapping table;
  const Ref colors = state.toolkit.color.now();
  for (const DefaultMaterial& material : materials) {
    const Ref color =
        host::call_method(colors, state.names.from_deltares, host::integer(material.color));
    table.put(host::Name(material.name),
              Ref::steal(PyTuple_Pack(3, host::real(material.gam_dry).get(),
                                      host::real(material.gam_wet).get(), color.get())));
  }
  return table.done();
}

Ref default_vertical_drain(const State& state) {
  const State::Names& names = state.names;
  return host::call_with(state.vertical_drain.original(),
                         {host::get(state.drain_type.original(), names.strip), host::real(0.0),
                          host::real(100.0), host::real(0.0), host::real(1.0), host::real(0.1)},
                         {{names.thickness, host::real(0.003)},
                          {names.grid, host::get(state.drain_grid.original(), names.triangular)},
                          {names.start_of_drainage, host::real(0.0)},
                          {names.phreatic_level_in_drain, host::real(0.0)}});
}

}  // namespace dsettlement::soil
