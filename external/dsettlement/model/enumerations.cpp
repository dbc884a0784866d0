#include "model/enumerations.hpp"

#include "host/class_body.hpp"

namespace dsettlement::model {

void define_enumerations(host::Module& module, State& state) {
  state.calculation_model = host::make_enumeration(
      module, "CalculationModel",
      R"(The relation between stress, time and strain with which settlements are calculated.

NEN_KOPPEJAN: Koppejan's model; strain is linear or natural, as `natural_strain` says.
NEN_BJERRUM: Bjerrum's model; strain is always linear.
ISOTACHE: the a,b,c isotache model; strain is always natural.)",
      {{"NEN_KOPPEJAN", 0}, {"NEN_BJERRUM", 1}, {"ISOTACHE", 2}});
  state.consolidation_model = host::make_enumeration(
      module, "ConsolidationModel",
      R"(The way in which the dissipation of excess pore pressure is calculated.

DARCY: flow between the layers by Darcy's law.
TERZAGHI: Terzaghi's degree of consolidation, layer by layer.)",
      {{"DARCY", 0}, {"TERZAGHI", 1}});
}

}  // namespace dsettlement::model
