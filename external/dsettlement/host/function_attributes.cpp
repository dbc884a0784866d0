#include "host/function_attributes.hpp"

#include "host/containers.hpp"
#include "host/function_object.hpp"
#include "host/name.hpp"
#include "host/text.hpp"

namespace dsettlement::host {

namespace {

PyObject* get_name(PyObject* self, void* /*closure*/) {
  return share(as_function(self).name).release();
}

PyObject* get_qualified_name(PyObject* self, void* /*closure*/) {
  return share(as_function(self).qualified_name).release();
}

PyObject* get_documentation(PyObject* self, void* /*closure*/) {
  return share(as_function(self).documentation).release();
}

int set_documentation(PyObject* self, PyObject* value, void* /*closure*/) {
  as_function(self).documentation = value == nullptr ? none() : share(value);
  return 0;
}

PyObject* get_text_signature(PyObject* self, void* /*closure*/) {
  return guard([&] { return as_function(self).binding.signature(); });
}

PyObject* get_is_abstract(PyObject* self, void* /*closure*/) {
  return boolean(as_function(self).description.is_abstract).release();
}

// The declared types as text; they are for readers and tools, and nothing enforces them.
PyObject* get_annotations(PyObject* self, void* /*closure*/) {
  return guard([&] {
    const Description& description = as_function(self).description;
    Mapping annotations;
    for (const Parameter& parameter : description.parameters) {
      if (*parameter.type == '\0') continue;
      annotations.put(Name(parameter.name), Name(parameter.type));
    }
    annotations.put(Name("return"), Name(description.result));
    return annotations.done();
  });
}

// What follows lets tools that ask for a function written in Python work with this one: a stand-in
// that a test makes with `autospec` binds its object and checks its calls only for such a function.
// The code is never run; it carries the names and kinds of the parameters.

PyObject* get_class(PyObject* /*self*/, void* /*closure*/) {
  return share(reinterpret_cast<PyObject*>(&PyFunction_Type)).release();
}

Ref namespace_of(const Function& function) {
  return function.module ? share(PyModule_GetDict(function.module.get())) : Mapping().done();
}

PyObject* get_globals(PyObject* self, void* /*closure*/) {
  return guard([&] { return namespace_of(as_function(self)); });
}

// A function written in Python that has the same parameters.
Ref likeness(const Function& function) {
  const Ref source = text("def {}{}: ...", {function.name, function.binding.signature()});
  const Ref names = Mapping().done();
  static_cast<void>(Ref::steal(
      PyRun_String(PyUnicode_AsUTF8(source.get()), Py_file_input, names.get(), names.get())));
  return item(names, function.name);
}

// The attribute of that name of the likeness.
PyObject* get_alike(PyObject* self, void* name) {
  return guard(
      [&] { return get(likeness(as_function(self)), Name(static_cast<const char*>(name))); });
}

PyObject* get_signature(PyObject* self, void* /*closure*/) {
  return guard([&] { return call(import("inspect", "signature"), likeness(as_function(self))); });
}

PyObject* get_closure(PyObject* /*self*/, void* /*closure*/) {
  return none().release();
}

}  // namespace

PyGetSetDef* function_attributes() {
  static char code[] = "__code__";
  static char defaults[] = "__defaults__";
  static char keyword_defaults[] = "__kwdefaults__";
  static PyGetSetDef attributes[] = {
      {"__name__", get_name, nullptr, nullptr, nullptr},
      {"__qualname__", get_qualified_name, nullptr, nullptr, nullptr},
      {"__doc__", get_documentation, set_documentation, nullptr, nullptr},
      {"__text_signature__", get_text_signature, nullptr, nullptr, nullptr},
      {"__signature__", get_signature, nullptr, nullptr, nullptr},
      {"__annotations__", get_annotations, nullptr, nullptr, nullptr},
      {"__isabstractmethod__", get_is_abstract, nullptr, nullptr, nullptr},
      {"__class__", get_class, nullptr, nullptr, nullptr},
      {"__code__", get_alike, nullptr, nullptr, code},
      {"__defaults__", get_alike, nullptr, nullptr, defaults},
      {"__kwdefaults__", get_alike, nullptr, nullptr, keyword_defaults},
      {"__globals__", get_globals, nullptr, nullptr, nullptr},
      {"__closure__", get_closure, nullptr, nullptr, nullptr},
      {"__dict__", PyObject_GenericGetDict, PyObject_GenericSetDict, nullptr, nullptr},
      {nullptr, nullptr, nullptr, nullptr, nullptr}};
  return attributes;
}

}  // namespace dsettlement::host
