// The class _Material: a record of soil parameters.
#pragma once

#include "soil/state.hpp"

namespace dsettlement::soil {

// _Material(gam_dry, gam_wet, color=color, **parameters). The mapping of parameters is the object's
// own from here on.
[[nodiscard]] host::Ref make_material(State& state, host::Handle gam_dry, host::Handle gam_wet,
                                      host::Handle color, host::Handle parameters);

void define_material(host::Module& module, State& state);

}  // namespace dsettlement::soil
