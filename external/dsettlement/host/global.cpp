#include "host/global.hpp"

#include "host/object.hpp"
#include "host/text.hpp"

namespace dsettlement::host {

void Global::operator=(Ref object) {
  module_.add(name_, object);
  original_ = std::move(object);
}

Ref Global::now() const {
  PyObject* object = PyDict_GetItemWithError(module_.names(), Handle(name_));
  if (object != nullptr) return share(object);
  if (PyErr_Occurred() != nullptr) throw ErrorSet{};
  raise(PyExc_NameError, text("name '{}' is not defined", {name_}));
}

bool Global::is_original() const {
  PyObject* object = PyDict_GetItemWithError(module_.names(), Handle(name_));
  if (object == nullptr && PyErr_Occurred() != nullptr) throw ErrorSet{};
  return object == original_.get();
}

namespace {

// `from module import name`.
Ref import_from(Handle module, Handle name) {
  if (PyObject_HasAttr(module, name) != 0) return get(module, name);
  const Ref module_name = Ref::steal(PyModule_GetNameObject(module));
  PyObject* file = PyModule_GetFilenameObject(module);
  if (file == nullptr) PyErr_Clear();
  const Ref path = file == nullptr ? none() : Ref::steal(file);
  const Ref message =
      text("cannot import name {} from {} ({})",
           {Ref::steal(PyObject_Repr(name)), Ref::steal(PyObject_Repr(module_name.get())),
            file == nullptr ? Name("unknown location").get() : path.get()});
  PyErr_SetImportError(message.get(), module_name.get(), path.get());
  throw ErrorSet{};
}

}  // namespace

Imported::Imported(Module& module, const char* source, const char* name)
    : Global(module, name), source_(module) {
  source_ = Ref::steal(PyImport_ImportModule(source));
  Global::operator=(import_from(source_, name_));
}

Ref Imported::now() const {
  Ref object = Global::now();
  if (object.get() != original_.get()) return object;
  return get(source_, name_);
}

}  // namespace dsettlement::host
