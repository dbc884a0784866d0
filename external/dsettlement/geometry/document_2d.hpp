// The document of a two-dimensional model, in which objects become numbers.
#pragma once

#include "geometry/state.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

void add_document(host::ClassBody& body, State& state);

}  // namespace dsettlement::geometry
