#include "host/known_members.hpp"

#include "host/internals.hpp"

namespace dsettlement::host {

KnownMembers::KnownMembers(Module& module, std::initializer_list<const char*> names)
    : names_(names.begin(), names.end()), members_(module) {}

void KnownMembers::remember(Handle type) {
  const Ref members = Ref::steal(PyTuple_New(static_cast<Py_ssize_t>(names_.size())));
  Py_ssize_t place = 0;
  for (const Name& name : names_) {
    PyTuple_SET_ITEM(members.get(), place++, share(member_of(as_type(type), name)).release());
  }
  members_ = members;
}

bool KnownMembers::are_those_of(Handle object) const {
  PyTypeObject* type = class_of(object);
  if (is_of_version(type, seen_version_)) return true;
  if (!has_default_lookup(type)) return false;
  Py_ssize_t place = 0;
  for (const Name& name : names_) {
    if (member_of(type, name) != PyTuple_GET_ITEM(members_.get(), place++)) return false;
  }
  seen_version_ = version_of(type);
  return true;
}

}  // namespace dsettlement::host
