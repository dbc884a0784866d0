#include "host/class_body.hpp"

#include "host/function.hpp"

namespace dsettlement::host {

namespace {

Ref tuple_of(std::initializer_list<Handle> objects) {
  Ref tuple = Ref::steal(PyTuple_New(static_cast<Py_ssize_t>(objects.size())));
  Py_ssize_t index = 0;
  for (const Handle object : objects) {
    PyTuple_SET_ITEM(tuple.get(), index++, share(object).release());
  }
  return tuple;
}

PyObject* as_object(PyTypeObject& type) {
  return reinterpret_cast<PyObject*>(&type);
}

}  // namespace

ClassBody::ClassBody(Module& module, const char* name, const char* documentation)
    : module_(module), name_(characters_of(name)) {
  add("__module__", module.name());
  add("__qualname__", name_);
  add("__doc__", characters_of(documentation));
}

void ClassBody::add(const char* name, Handle value) {
  members_.put(Name(name), value);
}

void ClassBody::declare(const char* name, const char* type) {
  annotations_.put(Name(name), Name(type));
}

void ClassBody::add_operation(void* state, const Description& description) {
  Ref function = make_function(module_, state, description, name_);
  switch (description.role) {
    case Role::method:
      break;
    case Role::property:
      function = call(as_object(PyProperty_Type), function);
      break;
    case Role::class_method:
      function = call(as_object(PyClassMethod_Type), function);
      break;
  }
  add(description.name, function);
}

Ref ClassBody::make(std::initializer_list<Handle> bases) {
  Handle metaclass = as_object(PyType_Type);
  if (bases.size() > 0) metaclass = reinterpret_cast<PyObject*>(Py_TYPE(*bases.begin()));
  return make_with(metaclass, bases);
}

Ref ClassBody::make_with(Handle metaclass, std::initializer_list<Handle> bases) {
  const Ref annotations = annotations_.done();
  if (PyDict_GET_SIZE(annotations.get()) > 0) add("__annotations__", annotations);
  return call(metaclass, name_, tuple_of(bases), members_.done());
}

Ref make_enumeration(const Module& module, const char* name, const char* documentation,
                     std::initializer_list<Member> members) {
  List pairs;
  for (const Member& member : members) {
    pairs.append(tuple_of({characters_of(member.name), integer(member.value)}));
  }
  Ref made = call_with(import("enum", "Enum"), {characters_of(name), pairs.done()},
                       {{Name("module"), module.name()}, {Name("qualname"), characters_of(name)}});
  set(made, Name("__doc__"), characters_of(documentation));
  return made;
}

}  // namespace dsettlement::host
