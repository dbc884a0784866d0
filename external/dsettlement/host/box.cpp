#include "host/box.hpp"

#include <new>

namespace dsettlement::host {

namespace {

struct Box {
  PyObject_HEAD  // the macro brings its own semicolon
      std::unique_ptr<Content>
          content;
};

Box& as_box(PyObject* object) {
  return *reinterpret_cast<Box*>(object);
}

int traverse(PyObject* self, visitproc visit, void* arg) {
  Py_VISIT(Py_TYPE(self));
  const Box& box = as_box(self);
  return box.content ? box.content->traverse(visit, arg) : 0;
}

int clear(PyObject* self) {
  if (as_box(self).content) as_box(self).content->clear();
  return 0;
}

// What is in a box is worth nothing elsewhere: copies and pickles of a box are None.
PyObject* reduce(PyObject* /*self*/, PyObject* /*arguments*/) {
  return Py_BuildValue("O()", Py_TYPE(Py_None));
}

void deallocate(PyObject* self) {
  PyObject_GC_UnTrack(self);
  PyTypeObject* type = Py_TYPE(self);
  as_box(self).content.~unique_ptr();
  type->tp_free(self);
  Py_DECREF(type);
}

}  // namespace

Ref make_box_type(Handle module) {
  static PyMethodDef methods[] = {{"__reduce__", reduce, METH_NOARGS, nullptr}, {}};
  PyType_Slot slots[] = {{Py_tp_methods, methods},
                         {Py_tp_dealloc, reinterpret_cast<void*>(deallocate)},
                         {Py_tp_traverse, reinterpret_cast<void*>(traverse)},
                         {Py_tp_clear, reinterpret_cast<void*>(clear)},
                         {0, nullptr}};
  PyType_Spec spec{.name = "sembra.external.dsettlement._box",
                   .basicsize = sizeof(Box),
                   .itemsize = 0,
                   .flags = Py_TPFLAGS_DEFAULT | Py_TPFLAGS_HAVE_GC | Py_TPFLAGS_IMMUTABLETYPE |
                            Py_TPFLAGS_DISALLOW_INSTANTIATION,
                   .slots = slots};
  return Ref::steal(PyType_FromModuleAndSpec(module, &spec, nullptr));
}

Ref make_box(Handle box_type, std::unique_ptr<Content> content) {
  auto* type = reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(box_type));
  Ref object = Ref::steal(type->tp_alloc(type, 0));
  new (&as_box(object.get()).content) std::unique_ptr<Content>(std::move(content));
  return object;
}

Content* content_of(Handle object) noexcept {
  PyObject* box = object;
  // Each module has its own type of boxes, and all of them end alike.
  const bool is_box = box != nullptr && Py_TYPE(box)->tp_dealloc == deallocate;
  return is_box ? as_box(box).content.get() : nullptr;
}

}  // namespace dsettlement::host
