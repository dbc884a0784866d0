#include "host/record_class.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "host/changes.hpp"
#include "host/internals.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

namespace {

// What Python leaves behind in a class by itself, or what says nothing of how its objects behave.
constexpr std::array<std::string_view, 4> harmless{"__slotnames__", "__annotations__", "__doc__",
                                                   "__module__"};

bool matters(PyObject* name) {
  Py_ssize_t length = 0;
  const char* text =
      PyUnicode_CheckExact(name) != 0 ? PyUnicode_AsUTF8AndSize(name, &length) : nullptr;
  if (text == nullptr) {
    PyErr_Clear();
    return true;
  }
  const std::string_view view(text, static_cast<std::size_t>(length));
  return std::ranges::find(harmless, view) == harmless.end();
}

// Whether all members of one class that matter are members of the other.
bool has_all_of(PyObject* members, PyObject* others) {
  PyObject* name = nullptr;
  PyObject* value = nullptr;
  for (Py_ssize_t place = 0; PyDict_Next(others, &place, &name, &value) != 0;) {
    if (!matters(name)) continue;
    PyObject* found = PyDict_GetItemWithError(members, name);
    if (found == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
    if (found != value) return false;
  }
  return true;
}

}  // namespace

RecordClass::RecordClass(Module& module, const char* name)
    : Global(module, name), members_(module), bases_(module) {}

void RecordClass::operator=(Ref type) {
  members_ = Ref::steal(PyDict_Copy(as_type(type)->tp_dict));
  bases_ = share(as_type(type)->tp_bases);
  Global::operator=(std::move(type));
}

bool RecordClass::is_unchanged() const {
  PyTypeObject* type = as_type(original_);
  if (is_of_version(type, seen_version_)) return true;
  if (!has_same_members()) return false;
  module_.changes().note();
  seen_version_ = version_of(type);
  return true;
}

bool RecordClass::has_same_members() const {
  const PyTypeObject* type = as_type(original_);
  return type->tp_bases == bases_.get() && has_all_of(type->tp_dict, members_.get()) &&
         has_all_of(members_.get(), type->tp_dict);
}

void RecordClass::initialize(Handle object, Handle name, Handle value) const {
  if (is_class_of(object) && is_unchanged() && !own_attribute(object, name)) {
    check(PyObject_GenericSetAttr(object, name, value));
  } else {
    set(object, name, value);
  }
}

}  // namespace dsettlement::host
