#include "host/internals.hpp"

#include "host/name.hpp"

namespace dsettlement::host {

PyObject* member_of(PyTypeObject* type, Handle name) noexcept {
  return _PyType_Lookup(type, name);
}

bool has_default_lookup(PyTypeObject* type) {
  if (type->tp_getattro == PyObject_GenericGetAttr) return true;
  // A class that only says what comes in the place of missing attributes has no say in others.
  const Name get_attribute("__getattribute__");
  return member_of(type, get_attribute) == member_of(&PyBaseObject_Type, get_attribute);
}

unsigned int version_of(PyTypeObject* type) noexcept {
  return PyUnstable_Type_AssignVersionTag(type) != 0 ? type->tp_version_tag : 0;
}

Ref own_attribute(Handle object, Handle name) {
  PyObject* value = _PyObject_GenericGetAttrWithDict(object, name, nullptr, 1);
  if (value != nullptr) return Ref::steal(value);
  if (PyErr_Occurred() != nullptr) throw ErrorSet{};
  return {};
}

Ref own_attributes(Handle object) {
  return Ref::steal(PyObject_GenericGetDict(object, nullptr));
}

Ref value_in(const Ref& dictionary, Handle key) {
  PyObject* value = PyDict_GetItemWithError(dictionary.get(), key);
  if (value == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
  return share(value);
}

bool has_one_other_owner(const Ref& object) noexcept {
  return Py_REFCNT(object.get()) == 2;
}

void leave_to_its_count(Handle tuple) noexcept {
  PyObject_GC_UnTrack(tuple);
}

}  // namespace dsettlement::host
