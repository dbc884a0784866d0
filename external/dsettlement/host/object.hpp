// What Python code does with objects, in C++: attributes, calls, truth, comparison.
#pragma once

#include <Python.h>

#include <array>
#include <initializer_list>
#include <span>

#include "host/ref.hpp"

namespace dsettlement::host {

[[nodiscard]] inline Ref get(Handle object, Handle name) {
  return Ref::steal(PyObject_GetAttr(object, name));
}

// Whether `get` runs nothing of an application: the class of the object has under that name what
// this module has put there, `descriptor`, or null for nothing, and no way of its own to
// attributes.
[[nodiscard]] bool gets_directly(Handle object, Handle name, PyObject* descriptor);

inline void set(Handle object, Handle name, Handle value) {
  check(PyObject_SetAttr(object, name, value));
}

[[nodiscard]] inline Ref item(Handle container, Handle key) {
  return Ref::steal(PyObject_GetItem(container, key));
}

[[nodiscard]] Ref item(Handle sequence, Py_ssize_t index);

[[nodiscard]] inline bool is_true(Handle object) {
  const int answer = PyObject_IsTrue(object);
  check(answer);
  return answer != 0;
}

// Truth of `left <operation> right`, with operation one of Py_LT, Py_LE, Py_EQ, Py_NE, Py_GT,
// Py_GE. The operands go to their own comparison, also where they are the same object.
[[nodiscard]] bool compare(Handle left, int operation, Handle right);

// Truth of `lower <= value <= upper`; the second comparison runs only if the first holds.
[[nodiscard]] bool between(Handle lower, Handle value, Handle upper);
[[nodiscard]] bool between(long lower, Handle value, long upper);
[[nodiscard]] bool between(double lower, Handle value, long upper);

[[nodiscard]] inline bool contains(Handle container, Handle key) {
  const int answer = PySequence_Contains(container, key);
  check(answer);
  return answer != 0;
}

[[nodiscard]] inline bool is_instance(Handle object, Handle type) {
  const int answer = PyObject_IsInstance(object, type);
  check(answer);
  return answer != 0;
}

[[nodiscard]] inline Ref integer(long value) {
  return Ref::steal(PyLong_FromLong(value));
}
[[nodiscard]] inline Ref real(double value) {
  return Ref::steal(PyFloat_FromDouble(value));
}

[[nodiscard]] inline Ref characters_of(const char* text) {
  return Ref::steal(PyUnicode_FromString(text));
}

// callable(arguments...)
template <typename... Arguments>
[[nodiscard]] Ref call(Handle callable, const Arguments&... arguments) {
  // The free slot in front lets a bound method put its object there without copying the rest.
  std::array<PyObject*, sizeof...(Arguments) + 1> stack{
      nullptr, static_cast<PyObject*>(Handle(arguments))...};
  return Ref::steal(PyObject_Vectorcall(
      callable, stack.data() + 1, sizeof...(Arguments) | PY_VECTORCALL_ARGUMENTS_OFFSET, nullptr));
}

// object.name(arguments...)
template <typename... Arguments>
Ref call_method(Handle object, Handle name, const Arguments&... arguments) {
  std::array<PyObject*, sizeof...(Arguments) + 2> stack{
      nullptr, object, static_cast<PyObject*>(Handle(arguments))...};
  return Ref::steal(PyObject_VectorcallMethod(
      name, stack.data() + 1, (sizeof...(Arguments) + 1) | PY_VECTORCALL_ARGUMENTS_OFFSET,
      nullptr));
}

struct Keyword {
  Handle name;
  Handle value;
};

// callable(*positional, **keywords)
[[nodiscard]] Ref call_with(Handle callable, std::initializer_list<Handle> positional,
                            std::span<const Keyword> keywords);
[[nodiscard]] inline Ref call_with(Handle callable, std::initializer_list<Handle> positional,
                                   std::initializer_list<Keyword> keywords) {
  return call_with(callable, positional, std::span(keywords.begin(), keywords.size()));
}

// super(type, object).name, for an operation that runs the one it overrides first.
[[nodiscard]] Ref super(Handle type, Handle object, Handle name);

}  // namespace dsettlement::host
