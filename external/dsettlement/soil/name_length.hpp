// How long a name may be.
#pragma once

#include <Python.h>

namespace dsettlement::soil {

// The most characters of the name of a material or of a non-uniform load.
inline constexpr Py_ssize_t longest_name = 25;

}  // namespace dsettlement::soil
