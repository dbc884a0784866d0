// The part of the model document that one and two dimensions share.
#pragma once

#include "host/class_body.hpp"
#include "model/state.hpp"

namespace dsettlement::model {

void add_document(host::ClassBody& body, State& state);
void add_vertical_documents(host::ClassBody& body, State& state);

}  // namespace dsettlement::model
