// What the value objects share: equality and hash by two fields.
#pragma once

#include "host/object.hpp"
#include "host/parameter.hpp"

namespace dsettlement::geometry {

inline constexpr host::Parameter other_parameters[] = {host::self, {"other", "object"}};

// Leaves the comparison to the other operand.
[[nodiscard]] inline host::Ref not_implemented() {
  return host::share(Py_NotImplemented);
}

// left.first == right.first and left.second == right.second, with the result that `and` has.
[[nodiscard]] inline host::Ref both_equal(host::Handle left, host::Handle right, host::Handle first,
                                          host::Handle second) {
  const auto equal = [&](host::Handle field) {
    const host::Ref value = host::get(left, field);
    return host::Ref::steal(
        PyObject_RichCompare(value.get(), host::get(right, field).get(), Py_EQ));
  };
  host::Ref result = equal(first);
  if (host::is_true(result)) result = equal(second);
  return result;
}

[[nodiscard]] inline host::Ref hash_of(host::Handle object) {
  const Py_hash_t hash = PyObject_Hash(object);
  if (hash == -1) throw host::ErrorSet{};
  return host::Ref::steal(PyLong_FromSsize_t(hash));
}

// hash((object.first, object.second))
[[nodiscard]] inline host::Ref hash_of_both(host::Handle object, host::Handle first,
                                            host::Handle second) {
  const host::Ref left = host::get(object, first);
  const host::Ref right = host::get(object, second);
  return hash_of(host::Ref::steal(PyTuple_Pack(2, left.get(), right.get())));
}

}  // namespace dsettlement::geometry
