// What equality and hash of value objects are made of.
#pragma once

#include "host/object.hpp"
#include "host/parameter.hpp"

namespace dsettlement::geometry {

inline constexpr host::Parameter other_parameters[] = {host::self, {"other", "object"}};

// Leaves the comparison to the other operand.
[[nodiscard]] inline host::Ref not_implemented() {
  return host::share(Py_NotImplemented);
}

[[nodiscard]] inline host::Ref hash_of(host::Handle object) {
  const Py_hash_t hash = PyObject_Hash(object);
  if (hash == -1) throw host::ErrorSet{};
  return host::Ref::steal(PyLong_FromSsize_t(hash));
}

}  // namespace dsettlement::geometry
