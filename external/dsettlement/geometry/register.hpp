// The registers of a two-dimensional model: an index of what is in its lists, for as long as that
// is known.
#pragma once

#include "geometry/chain_register.hpp"
#include "geometry/vertical_register.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

// The registers of a model, or null if the model must be searched: because something in it is not
// plain, because its class goes other ways, or because somebody else holds on to its lists.
[[nodiscard]] ChainRegister* chain_register(State& state, host::Handle model);
[[nodiscard]] VerticalRegister* vertical_register(State& state, host::Handle model);

// Adds to the class of models what the registers need: a place for them and watched lists.
void add_registers(host::Module& module, State& state, host::ClassBody& body);

// To be called with the finished class.
void remember_for_registers(State& state, host::Handle model_class);

}  // namespace dsettlement::geometry
