// The part of the model document that one and two dimensions share.
#pragma once

#include "host/operation.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

extern const host::Operation<State> serialize;
extern const host::Operation<State> serialize_verticals;

}  // namespace dsettlement::model
