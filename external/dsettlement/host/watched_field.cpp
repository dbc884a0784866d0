#include "host/watched_field.hpp"

#include <new>

#include "host/internals.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

namespace {

struct Descriptor {
  PyObject_HEAD    // the macro brings its own semicolon
      Ref module;  // owns the state
  void* state;
  Notice notice;
  Ref name;
};

Descriptor& as_descriptor(PyObject* object) {
  return *reinterpret_cast<Descriptor*>(object);
}

void tell(const Descriptor& descriptor, Handle object) {
  if (descriptor.module) descriptor.notice(descriptor.state, object);
}

[[noreturn]] void refuse_missing(const Descriptor& descriptor, PyObject* object) {
  PyErr_Format(PyExc_AttributeError, "'%.100s' object has no attribute '%U'",
               Py_TYPE(object)->tp_name, descriptor.name.get());
  throw ErrorSet{};
}

// A class does not have what its objects have.
[[noreturn]] void refuse_class(const Descriptor& descriptor, PyObject* type) {
  const bool is_known = type != nullptr && PyType_Check(type) != 0;
  PyErr_Format(PyExc_AttributeError, "type object '%.100s' has no attribute '%U'",
               is_known ? reinterpret_cast<PyTypeObject*>(type)->tp_name : "?",
               descriptor.name.get());
  throw ErrorSet{};
}

// The object's own dictionary. A class has one too, which must not be written past the class.
Ref fields_of(Handle object) {
  if (PyType_Check(static_cast<PyObject*>(object)) != 0) {
    raise(PyExc_TypeError, "this attribute is one of objects, not of classes");
  }
  return own_attributes(object);
}

PyObject* read(PyObject* self, PyObject* object, PyObject* type) {
  return guard([&] {
    const Descriptor& descriptor = as_descriptor(self);
    if (object == nullptr || object == Py_None) refuse_class(descriptor, type);
    Ref value = value_in(fields_of(object), descriptor.name);
    // Told last: looking can run code, and from now on the reader may change what it gets.
    tell(descriptor, object);
    if (!value) refuse_missing(descriptor, object);
    return value;
  });
}

int write(PyObject* self, PyObject* object, PyObject* value) {
  const PyObject* done = guard([&] {
    const Descriptor& descriptor = as_descriptor(self);
    tell(descriptor, object);
    const Ref fields = fields_of(object);
    if (value != nullptr) {
      check(PyDict_SetItem(fields.get(), descriptor.name.get(), value));
    } else {
      const int present = PyDict_Contains(fields.get(), descriptor.name.get());
      check(present);
      if (present == 0) refuse_missing(descriptor, object);
      check(PyDict_DelItem(fields.get(), descriptor.name.get()));
    }
    return none();
  });
  return done == nullptr ? -1 : 0;  // None lives for ever, and is not counted
}

int traverse(PyObject* self, visitproc visit, void* arg) {
  Py_VISIT(Py_TYPE(self));
  Py_VISIT(as_descriptor(self).module.get());
  return 0;
}

int clear(PyObject* self) {
  const Ref module = std::move(as_descriptor(self).module);
  return 0;
}

void deallocate(PyObject* self) {
  PyObject_GC_UnTrack(self);
  PyTypeObject* type = Py_TYPE(self);
  as_descriptor(self).module.~Ref();
  as_descriptor(self).name.~Ref();
  type->tp_free(self);
  Py_DECREF(type);
}

}  // namespace

Ref WatchedField::peek(Handle object) const {
  if (!gets_directly(object, name_, descriptor_.get())) return {};
  return value_in(fields_of(object), name_);
}

Ref WatchedField::read(Handle object) const {
  const Ref value = peek(object);
  return value ? value : get(object, name_);
}

void WatchedField::initialize(Handle object, Handle value) const {
  const Ref fields = fields_of(object);
  const int present = PyDict_Contains(fields.get(), Handle(name_));
  check(present);
  if (present != 0) return set(object, name_, value);
  check(PyDict_SetItem(fields.get(), Handle(name_), value));
}

Handle WatchedField::watch_with(Handle field_type, Handle module, void* state, Notice notice) {
  auto* type = reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(field_type));
  Ref object = Ref::steal(type->tp_alloc(type, 0));
  Descriptor& descriptor = as_descriptor(object.get());
  new (&descriptor.module) Ref(share(module));
  descriptor.state = state;
  descriptor.notice = notice;
  new (&descriptor.name) Ref(share(name_));
  descriptor_ = std::move(object);
  return descriptor_;
}

Ref make_watched_field_type(Handle module) {
  PyType_Slot slots[] = {{Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
                         {Py_tp_traverse, reinterpret_cast<void*>(traverse)},
                         {Py_tp_clear, reinterpret_cast<void*>(clear)},
                         {Py_tp_descr_get, reinterpret_cast<void*>(read)},
                         {Py_tp_descr_set, reinterpret_cast<void*>(write)},
                         {0, nullptr}};
  PyType_Spec spec{.name = "sembra.external.dsettlement._watched_field",
                   .basicsize = sizeof(Descriptor),
                   .itemsize = 0,
                   .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_IMMUTABLETYPE |
                            Py_TPFLAGS_DISALLOW_INSTANTIATION,
                   .slots = slots};
  return Ref::steal(PyType_FromModuleAndSpec(module, &spec, nullptr));
}

}  // namespace dsettlement::host
