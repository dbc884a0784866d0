#include "host/changes.hpp"

#include "host/name.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

namespace {

// An operation of `object` itself: it refuses what is no object of an ordinary class.
Ref of_object(const char* name) {
  return get(reinterpret_cast<PyObject*>(&PyBaseObject_Type), Name(name));
}

constexpr Parameter set_parameters[] = {host::self, {"name", "str"}, {"value", "Any"}};

Ref set_counted(Changes& changes, Arguments arguments) {
  const auto [self, name, value] = arguments.first<3>();
  ++changes.count;
  return call(of_object("__setattr__"), self, name, value);
}

constexpr Parameter delete_parameters[] = {host::self, {"name", "str"}};

Ref delete_counted(Changes& changes, Arguments arguments) {
  const auto [self, name] = arguments.first<2>();
  ++changes.count;
  return call(of_object("__delattr__"), self, name);
}

// What stands in the object itself, with nothing of its class asked.
bool has(Handle object, Handle name) {
  PyObject* value = _PyObject_GenericGetAttrWithDict(object, name, nullptr, 1);
  if (value == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
  return value != nullptr && Ref::steal(value);
}

}  // namespace

constinit const Operation<Changes> set_attribute =
    method<set_counted>("__setattr__", set_parameters, "Implement setattr(self, name, value).");

constinit const Operation<Changes> delete_attribute =
    method<delete_counted>("__delattr__", delete_parameters, "Implement delattr(self, name).");

void initialize(const ClassSnapshot& made, Handle object, Handle name, Handle value) {
  if (made.is_class_of(object) && made.holds() && !has(object, name)) {
    check(PyObject_GenericSetAttr(object, name, value));
  } else {
    set(object, name, value);
  }
}

}  // namespace dsettlement::host
