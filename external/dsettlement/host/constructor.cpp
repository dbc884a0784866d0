#include "host/constructor.hpp"

namespace dsettlement::host {

namespace {

PyTypeObject* as_type(Handle type) {
  return reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(type));
}

}  // namespace

void Constructor::remember(Handle type) {
  original_ = share(_PyType_Lookup(as_type(type), Handle(init_)));
}

bool Constructor::is_still_that_of(Handle type) const {
  if (Py_TYPE(static_cast<PyObject*>(type)) != &PyType_Type) return false;
  PyTypeObject* plain = as_type(type);
  return plain->tp_new == PyBaseObject_Type.tp_new &&
         _PyType_Lookup(plain, Handle(init_)) == original_.get();
}

Ref allocate(Handle type) {
  return Ref::steal(as_type(type)->tp_alloc(as_type(type), 0));
}

}  // namespace dsettlement::host
