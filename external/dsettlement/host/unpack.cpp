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

}  // namespace

void unpack_into(Handle iterable, std::span<Ref> places) {
  const auto count = static_cast<Py_ssize_t>(places.size());
  if (PyObject* tuple = iterable;
      PyTuple_CheckExact(tuple) != 0 && PyTuple_GET_SIZE(tuple) == count) {
    for (Py_ssize_t i = 0; i < count; ++i) {
      places[static_cast<std::size_t>(i)] = share(PyTuple_GET_ITEM(tuple, i));
    }
    return;
  }
  const Ref iterator = iterator_of(iterable);
  for (std::size_t i = 0; i < places.size(); ++i) {
    places[i] = next(iterator);
    if (places[i]) continue;
    PyErr_Format(PyExc_ValueError, "not enough values to unpack (expected %zd, got %zu)", count, i);
    throw ErrorSet{};
  }
  if (next(iterator)) {
    PyErr_Format(PyExc_ValueError, "too many values to unpack (expected %zd)", count);
    throw ErrorSet{};
  }
}

}  // namespace dsettlement::host
