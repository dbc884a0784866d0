#include "host/class_snapshot.hpp"

namespace dsettlement::host {

namespace {

PyTypeObject* as_type(const Slot& slot) {
  return reinterpret_cast<PyTypeObject*>(slot.get());
}

}  // namespace

void ClassSnapshot::take(Handle type) {
  type_ = share(type);
  members_ = Ref::steal(PyDict_Copy(as_type(type_)->tp_dict));
  bases_ = share(as_type(type_)->tp_bases);
}

bool ClassSnapshot::holds() const {
  PyTypeObject* type = as_type(type_);
  if (type->tp_version_tag != 0 && type->tp_version_tag == seen_version_) return true;
  if (!is_unchanged()) return false;
  seen_version_ = PyUnstable_Type_AssignVersionTag(type) != 0 ? type->tp_version_tag : 0;
  return true;
}

bool ClassSnapshot::is_unchanged() const {
  const PyTypeObject* type = as_type(type_);
  if (type->tp_bases != bases_.get()) return false;
  const int copied = PyDict_Contains(type->tp_dict, Handle(slot_names_));
  check(copied);
  if (PyDict_GET_SIZE(type->tp_dict) != PyDict_GET_SIZE(members_.get()) + copied) return false;
  PyObject* name = nullptr;
  PyObject* value = nullptr;
  for (Py_ssize_t place = 0; PyDict_Next(members_.get(), &place, &name, &value) != 0;) {
    PyObject* now = PyDict_GetItemWithError(type->tp_dict, name);
    if (now == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
    if (now != value) return false;
  }
  return true;
}

}  // namespace dsettlement::host
