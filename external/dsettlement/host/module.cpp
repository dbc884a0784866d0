#include "host/module.hpp"

#include <algorithm>

#include "host/function.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

Module::Module(Handle module)
    : module_(module),
      name_(Ref::steal(PyModule_GetNameObject(module))),
      function_type_(make_function_type(module)) {}

Ref Module::constant(const Default& value) {
  const auto known = std::ranges::find(constants_, value, &std::pair<Default, Ref>::first);
  if (known != constants_.end()) return known->second;
  return constants_.emplace_back(value, value.object()).second;
}

void Module::add(Handle name, Handle value) const {
  check(PyDict_SetItem(names(), name, value));
}

int Module::traverse(visitproc visit, void* arg) const {
  Py_VISIT(function_type_.get());
  for (const Slot* slot : slots_) Py_VISIT(slot->get());
  return 0;
}

Ref import(const char* module, const char* name) {
  return get(Ref::steal(PyImport_ImportModule(module)), Name(name));
}

}  // namespace dsettlement::host
