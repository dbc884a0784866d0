#include "host/function.hpp"

#include <structmember.h>

#include <new>

#include "host/function_attributes.hpp"
#include "host/function_object.hpp"
#include "host/recursion.hpp"
#include "host/text.hpp"

namespace dsettlement::host {

namespace {

PyObject* call_laid_out(Function& function, PyObject* const* arguments, std::size_t count,
                        PyObject* keyword_names) noexcept {
  std::array<PyObject*, Binding::most_parameters> places;  // filled by bind, as far as it is used
  Binding::Owned owned;
  try {
    function.binding.bind(function.qualified_name, arguments, count, keyword_names,
                          std::span(places).first(function.binding.size()), owned);
  } catch (...) {
    translate_current_exception();
    return nullptr;
  }
  return function.description.entry(function.state, Arguments(places.data()));
}

PyObject* call_function(PyObject* self, PyObject* const* arguments, std::size_t count_and_flag,
                        PyObject* keyword_names) {
  // Operations call each other without a Python frame between them, so nobody else counts the
  // depth.
  const Recursion level;
  if (!level) return nullptr;
  Function& function = as_function(self);
  const auto count = static_cast<std::size_t>(PyVectorcall_NARGS(count_and_flag));
  if (keyword_names == nullptr && function.binding.takes_as_given(count)) {
    return function.description.entry(function.state, Arguments(arguments));
  }
  return call_laid_out(function, arguments, count, keyword_names);
}

PyObject* refuse_call(PyObject* /*self*/, PyObject* const* /*arguments*/, std::size_t /*count*/,
                      PyObject* /*keyword_names*/) {
  PyErr_SetString(PyExc_ReferenceError, "the module of this operation is gone");
  return nullptr;
}

PyObject* bind_to_object(PyObject* self, PyObject* object, PyObject* /*type*/) {
  if (object == nullptr || object == Py_None) return share(self).release();
  return PyMethod_New(self, object);
}

PyObject* show(PyObject* self) {
  return PyUnicode_FromFormat("<function %U at %p>", as_function(self).qualified_name.get(), self);
}

// A function is copied and pickled by its name, as functions are.
PyObject* reduce(PyObject* self, PyObject* /*unused*/) {
  return share(as_function(self).qualified_name).release();
}

int traverse(PyObject* self, visitproc visit, void* arg) {
  Py_VISIT(Py_TYPE(self));
  const Function& function = as_function(self);
  Py_VISIT(function.module.get());
  Py_VISIT(function.attributes);
  Py_VISIT(function.documentation.get());
  return 0;
}

int clear(PyObject* self) {
  Function& function = as_function(self);
  // From here on the state may go, so the body must not run any more.
  function.vectorcall = refuse_call;
  function.state = nullptr;
  const Ref module = std::move(function.module);
  function.documentation = none();
  Py_CLEAR(function.attributes);
  return 0;
}

void deallocate(PyObject* self) {
  PyObject_GC_UnTrack(self);
  Function& function = as_function(self);
  if (function.weak_references != nullptr) PyObject_ClearWeakRefs(self);
  PyTypeObject* type = Py_TYPE(self);
  Py_CLEAR(function.attributes);
  function.module.~Ref();
  function.name.~Ref();
  function.qualified_name.~Ref();
  function.documentation.~Ref();
  function.binding.~Binding();
  type->tp_free(self);
  Py_DECREF(type);
}

}  // namespace

Ref make_function_type(Handle module) {
  static PyMemberDef members[] = {
      {"__vectorcalloffset__", T_PYSSIZET, offsetof(Function, vectorcall), READONLY, nullptr},
      {"__weaklistoffset__", T_PYSSIZET, offsetof(Function, weak_references), READONLY, nullptr},
      {"__dictoffset__", T_PYSSIZET, offsetof(Function, attributes), READONLY, nullptr},
      {nullptr, 0, 0, 0, nullptr}};
  static PyMethodDef methods[] = {{"__reduce__", reduce, METH_NOARGS, nullptr},
                                  {nullptr, nullptr, 0, nullptr}};
  PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
                         {Py_tp_traverse, reinterpret_cast<void*>(traverse)},
                         {Py_tp_clear, reinterpret_cast<void*>(clear)},
                         {Py_tp_call, reinterpret_cast<void*>(PyVectorcall_Call)},
                         {Py_tp_descr_get, reinterpret_cast<void*>(bind_to_object)},
                         {Py_tp_repr, reinterpret_cast<void*>(show)},
                         {Py_tp_members, members},
                         {Py_tp_getset, function_attributes()},
                         {Py_tp_methods, methods},
                         {0, nullptr}};
  PyType_Spec spec{.name = "sembra.external.dsettlement._function",
                   .basicsize = sizeof(Function),
                   .itemsize = 0,
                   .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_HAVE_VECTORCALL |
                            Py_TPFLAGS_METHOD_DESCRIPTOR | Py_TPFLAGS_IMMUTABLETYPE |
                            Py_TPFLAGS_DISALLOW_INSTANTIATION,
                   .slots = slots};
  return Ref::steal(PyType_FromModuleAndSpec(module, &spec, nullptr));
}

Ref make_function(Module& module, void* state, const Description& description, Handle owner) {
  Ref name = Ref::steal(PyUnicode_InternFromString(description.name));
  Ref qualified_name = text("{}.{}", {owner, name});
  Ref documentation = Ref::steal(PyUnicode_FromString(description.documentation));
  Binding binding(module, description.parameters);

  auto* type = reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(module.function_type()));
  Ref object = Ref::steal(type->tp_alloc(type, 0));
  Function& function = as_function(object.get());
  function.vectorcall = call_function;
  function.state = state;
  new (&function.description) Description(description);
  new (&function.module) Ref(share(module.object()));
  new (&function.name) Ref(std::move(name));
  new (&function.qualified_name) Ref(std::move(qualified_name));
  new (&function.documentation) Ref(std::move(documentation));
  new (&function.binding) Binding(std::move(binding));
  return object;
}

}  // namespace dsettlement::host
