// The attributes by which Python's own tools know a function.
#pragma once

#include <Python.h>

namespace dsettlement::host {

// The table of attributes of the type of native function objects.
[[nodiscard]] PyGetSetDef* function_attributes();

}  // namespace dsettlement::host
