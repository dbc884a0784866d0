#include "geometry/register.hpp"

#include <memory>

#include "host/box.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

class Registers : public host::Content {
 public:
  int traverse(visitproc visit, void* argument) const override {
    return chains.traverse(visit, argument);
  }
  void clear() noexcept override { chains.clear(); }

  ChainRegister chains;
  VerticalRegister verticals;
};

// The registers stand in a slot of their own and not among the attributes of a model, which
// applications look at, copy and pickle. The slot is used directly, past what a derived class does
// with attributes.
Registers* registers_of(const State& state, Handle model) {
  const descrgetfunc read = Py_TYPE(state.register_slot.get())->tp_descr_get;
  PyObject* box = read(state.register_slot.get(), model, nullptr);
  if (box == nullptr) {
    PyErr_Clear();
    return nullptr;
  }
  const Ref kept = Ref::steal(box);  // by the slot, too
  return static_cast<Registers*>(host::content_of(state.box_type, kept));
}

Registers& registers_made_for(const State& state, Handle model) {
  if (Registers* registers = registers_of(state, model)) return *registers;
  auto content = std::make_unique<Registers>();
  Registers& registers = *content;
  const Ref box = host::make_box(state.box_type, std::move(content));
  const descrsetfunc write = Py_TYPE(state.register_slot.get())->tp_descr_set;
  host::check(write(state.register_slot.get(), model, box.get()));
  return registers;
}

bool reads_attributes_plainly(PyTypeObject* type) {
  return type->tp_getattro == PyObject_GenericGetAttr;
}

bool is_plain_list(PyObject* list) {
  return list != nullptr && PyList_CheckExact(list) != 0;
}

bool has_attributes_alone(Handle model) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(model, nullptr));
  return Py_REFCNT(fields.get()) == 2;  // the model and this function
}

void doubt_chains(State& state, Handle model) {
  if (Registers* registers = registers_of(state, model)) registers->chains.doubt();
}

void doubt_verticals(State& state, Handle model) {
  if (Registers* registers = registers_of(state, model)) registers->verticals.doubt();
}

// What is copied or pickled goes without the registers: the copy makes its own.
Ref get_state(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  doubt_chains(state, self);
  doubt_verticals(state, self);
  Ref members = host::call(host::super(state.model_2d.original(), self, names.get_state));
  if (PyTuple_CheckExact(members.get()) == 0 || PyTuple_GET_SIZE(members.get()) != 2) {
    return members;
  }
  // The attributes, and what stands in slots.
  const Ref slots = host::item(members, 1);
  if (PyDict_CheckExact(slots.get()) != 0 && host::contains(slots, names.register_slot)) {
    host::check(PyDict_DelItem(slots.get(), names.register_slot.get()));
    if (PyDict_GET_SIZE(slots.get()) == 0) return host::item(members, 0);
  }
  return members;
}

}  // namespace

ChainRegister* chain_register(State& state, Handle model) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  PyObject* boundaries = state.boundaries.peek(model);
  PyObject* pl_lines = state.pl_lines.peek(model);
  if (!is_plain_list(boundaries) || !is_plain_list(pl_lines) || !reads_attributes_plainly(type) ||
      _PyType_Lookup(type, state.names.private_curves.get()) != state.curves_property.get() ||
      !are_classes_as_made(state) || !has_attributes_alone(model)) {
    return nullptr;
  }
  ChainRegister& chains = registers_made_for(state, model).chains;
  return chains.holds(state, {boundaries, pl_lines}) ? &chains : nullptr;
}

VerticalRegister* vertical_register(State& state, Handle model) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  PyObject* list = state.verticals.peek(model);
  if (!is_plain_list(list) || !reads_attributes_plainly(type) ||
      !state.model.vertical_as_made.holds() || !has_attributes_alone(model)) {
    return nullptr;
  }
  VerticalRegister& verticals = registers_made_for(state, model).verticals;
  return verticals.holds(state, list) ? &verticals : nullptr;
}

void add_registers(host::Module& module, State& state, host::ClassBody& body) {
  state.box_type = host::make_box_type(module.object());
  body.add("__slots__", Ref::steal(PyTuple_Pack(1, host::Name("__register").get())));
  body.add(state, host::method<get_state>("__getstate__",
                                          "Return what a copy or a pickle of the model is made of.")
                      .returning("Any"));
  const auto add = [&](host::WatchedField& field, Handle descriptor) {
    body.add(PyUnicode_AsUTF8(field.name()), descriptor);
  };
  const Handle owner = module.object();
  add(state.boundaries,
      state.boundaries.watch<State, doubt_chains>(state.field_type, owner, state));
  add(state.pl_lines, state.pl_lines.watch<State, doubt_chains>(state.field_type, owner, state));
  add(state.verticals,
      state.verticals.watch<State, doubt_verticals>(state.field_type, owner, state));
}

void remember_for_registers(State& state, Handle model_class) {
  state.register_slot = host::get(model_class, state.names.register_slot);
  state.curves_property = host::get(model_class, state.names.private_curves);
  state.create_curves = host::get(model_class, state.names.create_curves);
  state.create_curve = host::get(model_class, state.names.create_curve);
}

}  // namespace dsettlement::geometry
