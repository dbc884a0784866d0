#include "host/constructor.hpp"

#include "host/internals.hpp"

namespace dsettlement::host {

void Constructor::remember(Handle type) {
  original_ = share(member_of(as_type(type), init_));
}

bool Constructor::is_still_that_of(Handle type) const {
  if (Py_TYPE(static_cast<PyObject*>(type)) != &PyType_Type) return false;
  PyTypeObject* made = as_type(type);
  return made->tp_new == PyBaseObject_Type.tp_new && member_of(made, init_) == original_.get();
}

Ref allocate(Handle type) {
  // By way of the constructor of `object`, which lays the attributes out within the object.
  const Ref no_arguments = Ref::steal(PyTuple_New(0));
  return Ref::steal(PyBaseObject_Type.tp_new(as_type(type), no_arguments.get(), nullptr));
}

}  // namespace dsettlement::host
