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

bool is_of_version(PyTypeObject* type, unsigned int version) noexcept {
  return type->tp_version_tag != 0 && type->tp_version_tag == version;
}

void put_member(PyTypeObject* type, const char* name, Handle member) {
  check(PyDict_SetItemString(type->tp_dict, name, member));
  PyType_Modified(type);
}

bool is_of_fixed_class(Handle object, std::string_view name) noexcept {
  const PyTypeObject* type = class_of(object);
  return (type->tp_flags & Py_TPFLAGS_HEAPTYPE) == 0 && name == type->tp_name;
}

Ref in_slot(Handle slot, Handle object) {
  const descrgetfunc read = class_of(slot)->tp_descr_get;
  if (read == nullptr) return {};
  PyObject* value = read(slot, object, reinterpret_cast<PyObject*>(class_of(object)));
  if (value != nullptr) return Ref::steal(value);
  PyErr_Clear();
  return {};
}

void put_in_slot(Handle slot, Handle object, Handle value) {
  check(class_of(slot)->tp_descr_set(slot, object, value));
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
