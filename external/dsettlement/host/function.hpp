// The native function object: what stands in a class body where Python code would have a `def`.
#pragma once

#include <Python.h>

#include "host/module.hpp"
#include "host/operation.hpp"

namespace dsettlement::host {

// Makes the type of the function objects of one module.
[[nodiscard]] Ref make_function_type(Handle module);

// A function object for an operation of the class `owner`. It holds on to the module, which owns
// the state, for as long as it can be called.
[[nodiscard]] Ref make_function(Module& module, void* state, const Description& description,
                                Handle owner);

}  // namespace dsettlement::host
