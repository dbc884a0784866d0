#include "host/changes.hpp"

#include <algorithm>

#include "host/name.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

namespace {

// An operation of `object` itself: it refuses what is no object of an ordinary class.
Ref of_object(const char* name) {
  return get(reinterpret_cast<PyObject*>(&PyBaseObject_Type), Name(name));
}

constexpr Parameter set_parameters[] = {host::self, {"name", "str"}, {"value", "Any"}};

Ref set_counted(CountedFields& fields, Arguments arguments) {
  const auto [self, name, value] = arguments.first<3>();
  fields.note(name);
  return call(of_object("__setattr__"), self, name, value);
}

constexpr Parameter delete_parameters[] = {host::self, {"name", "str"}};

Ref delete_counted(CountedFields& fields, Arguments arguments) {
  const auto [self, name] = arguments.first<2>();
  fields.note(name);
  return call(of_object("__delattr__"), self, name);
}

// What stands in the object itself, with nothing of its class asked.
bool has(Handle object, Handle name) {
  PyObject* value = _PyObject_GenericGetAttrWithDict(object, name, nullptr, 1);
  if (value == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
  return value != nullptr && Ref::steal(value);
}

}  // namespace

CountedFields::CountedFields(Changes& changes, std::initializer_list<const char*> names)
    : changes_(changes) {
  if (names.size() == 0) return;
  for (const char* name : {"__class__", "__dict__"}) names_.emplace_back(name);
  for (const char* name : names) names_.emplace_back(name);
}

void CountedFields::note(Handle name) {
  const bool is_known = PyUnicode_CheckExact(static_cast<PyObject*>(name)) != 0;
  const auto is_it = [&](const Name& counted) {
    return PyUnicode_Compare(counted.get(), name) == 0;
  };
  if (names_.empty() || !is_known || std::ranges::any_of(names_, is_it)) ++changes_.count;
}

constinit const Operation<CountedFields> set_attribute =
    method<set_counted>("__setattr__", set_parameters, "Implement setattr(self, name, value).");

constinit const Operation<CountedFields> delete_attribute =
    method<delete_counted>("__delattr__", delete_parameters, "Implement delattr(self, name).");

void initialize(const ClassSnapshot& made, Handle object, Handle name, Handle value) {
  if (made.is_class_of(object) && made.holds() && !has(object, name)) {
    check(PyObject_GenericSetAttr(object, name, value));
  } else {
    set(object, name, value);
  }
}

}  // namespace dsettlement::host
