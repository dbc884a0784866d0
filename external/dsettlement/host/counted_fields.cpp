#include "host/counted_fields.hpp"

#include <algorithm>

#include "host/object.hpp"

namespace dsettlement::host {

namespace {

// An operation of `object` itself: it refuses what is no object of an ordinary class.
Ref of_object(const char* name) {
  return get(reinterpret_cast<PyObject*>(&PyBaseObject_Type), Name(name));
}

constexpr Parameter set_parameters[] = {host::self, {"name", "str"}, {"value", "Any"}};

Ref set_counted(CountedFields& fields, Arguments arguments) {
  const auto [self, name, value] = arguments.first<std::size(set_parameters)>();
  fields.note(name);
  return call(of_object("__setattr__"), self, name, value);
}

constexpr Parameter delete_parameters[] = {host::self, {"name", "str"}};

Ref delete_counted(CountedFields& fields, Arguments arguments) {
  const auto [self, name] = arguments.first<std::size(delete_parameters)>();
  fields.note(name);
  return call(of_object("__delattr__"), self, name);
}

}  // namespace

CountedFields::CountedFields(Module& module, std::initializer_list<const char*> names)
    : changes_(module.changes()) {
  if (names.size() == 0) return;
  for (const char* name : {"__class__", "__dict__"}) names_.emplace_back(name);
  for (const char* name : names) names_.emplace_back(name);
}

void CountedFields::add_to(ClassBody& body) {
  body.add(*this, method<set_counted>("__setattr__", set_parameters,
                                      "Implement setattr(self, name, value)."));
  body.add(*this, method<delete_counted>("__delattr__", delete_parameters,
                                         "Implement delattr(self, name)."));
}

void CountedFields::note(Handle name) {
  const bool is_known = PyUnicode_CheckExact(static_cast<PyObject*>(name)) != 0;
  const auto is_it = [&](const Name& counted) {
    return PyUnicode_Compare(counted.get(), name) == 0;
  };
  if (names_.empty() || !is_known || std::ranges::any_of(names_, is_it)) changes_.note();
}

}  // namespace dsettlement::host
