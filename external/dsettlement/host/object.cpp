#include "host/object.hpp"

#include <vector>

#include "host/internals.hpp"

namespace dsettlement::host {

bool gets_directly(Handle object, Handle name, PyObject* descriptor) {
  PyTypeObject* type = class_of(object);
  return has_default_lookup(type) && member_of(type, name) == descriptor;
}

Ref item(Handle sequence, Py_ssize_t index) {
  return item(sequence, integer(index));
}

bool compare(Handle left, int operation, Handle right) {
  return is_true(Ref::steal(PyObject_RichCompare(left, right, operation)));
}

bool between(Handle lower, Handle value, Handle upper) {
  return compare(lower, Py_LE, value) && compare(value, Py_LE, upper);
}

bool between(long lower, Handle value, long upper) {
  return between(integer(lower), value, integer(upper));
}

bool between(double lower, Handle value, long upper) {
  return between(real(lower), value, integer(upper));
}

Ref call_with(Handle callable, std::initializer_list<Handle> positional,
              std::span<const Keyword> keywords) {
  std::vector<PyObject*> stack{nullptr};
  stack.reserve(1 + positional.size() + keywords.size());
  for (const Handle argument : positional) stack.push_back(argument);
  const Ref names = Ref::steal(PyTuple_New(static_cast<Py_ssize_t>(keywords.size())));
  Py_ssize_t index = 0;
  for (const Keyword& keyword : keywords) {
    PyTuple_SET_ITEM(names.get(), index++, share(keyword.name).release());
    stack.push_back(keyword.value);
  }
  return Ref::steal(PyObject_Vectorcall(
      callable, stack.data() + 1, positional.size() | PY_VECTORCALL_ARGUMENTS_OFFSET, names.get()));
}

Ref super(Handle type, Handle object, Handle name) {
  // super(type, None) would be an unbound super, which no operation means.
  if (object == Py_None) {
    raise(PyExc_TypeError, "super(type, obj): obj must be an instance or subtype of type");
  }
  return get(call(reinterpret_cast<PyObject*>(&PySuper_Type), type, object), name);
}

}  // namespace dsettlement::host
