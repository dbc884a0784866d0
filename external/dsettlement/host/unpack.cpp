#include "host/unpack.hpp"

#include "host/object.hpp"

namespace dsettlement::host {

namespace {

Ref iterator_of(Handle iterable) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(iterable));
  if (type->tp_iter == nullptr && PySequence_Check(iterable) == 0) {
    PyErr_Format(PyExc_TypeError, "cannot unpack non-iterable %.200s object", type->tp_name);
    throw ErrorSet{};
  }
  return Ref::steal(PyObject_GetIter(iterable));
}

// The next element, or an empty Ref behind the last.
Ref next(Handle iterator) {
  PyObject* element = PyIter_Next(iterator);
  if (element == nullptr) {
    if (PyErr_Occurred() != nullptr) throw ErrorSet{};
    return {};
  }
  return Ref::steal(element);
}

Ref demand(Handle iterator, int position) {
  Ref element = next(iterator);
  if (!element) {
    PyErr_Format(PyExc_ValueError, "not enough values to unpack (expected 2, got %d)", position);
    throw ErrorSet{};
  }
  return element;
}

}  // namespace

Pair unpack_two(Handle iterable) {
  if (PyObject* pair = iterable; PyTuple_CheckExact(pair) != 0 && PyTuple_GET_SIZE(pair) == 2) {
    return {share(PyTuple_GET_ITEM(pair, 0)), share(PyTuple_GET_ITEM(pair, 1))};
  }
  const Ref iterator = iterator_of(iterable);
  Pair pair;
  pair.first = demand(iterator, 0);
  pair.second = demand(iterator, 1);
  if (next(iterator)) raise(PyExc_ValueError, "too many values to unpack (expected 2)");
  return pair;
}

}  // namespace dsettlement::host
