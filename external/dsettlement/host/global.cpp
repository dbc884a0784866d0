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

Imported::Imported(Module& module, const char* source, const char* name)
    : Global(module, name), source_(module) {
  source_ = Ref::steal(PyImport_ImportModule(source));
  Global::operator=(get(source_, name_));
}

Ref Imported::now() const {
  Ref object = Global::now();
  if (object.get() != original_.get()) return object;
  return get(source_, name_);
}

}  // namespace dsettlement::host
