// Length and slices of whatever has them, as `len` and subscripts in Python.
#pragma once

#include "host/object.hpp"

namespace dsettlement::host {

[[nodiscard]] inline Py_ssize_t length(Handle object) {
  const Py_ssize_t count = PyObject_Size(object);
  if (count < 0) throw ErrorSet{};
  return count;
}

// sequence[begin:end]
[[nodiscard]] inline Ref slice(Handle sequence, Py_ssize_t begin, Py_ssize_t end) {
  return item(sequence, Ref::steal(PySlice_New(integer(begin).get(), integer(end).get(), nullptr)));
}

// sequence[begin:]
[[nodiscard]] inline Ref slice_from(Handle sequence, Py_ssize_t begin) {
  return item(sequence, Ref::steal(PySlice_New(integer(begin).get(), nullptr, nullptr)));
}

}  // namespace dsettlement::host
