#include "geometry/register.hpp"

#include <memory>
#include <optional>
#include <utility>

#include "geometry/plain.hpp"
#include "host/box.hpp"
#include "host/containers.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

// The registers of a model stand in a slot of their own and not among its attributes, which
// applications look at, copy and pickle.
constexpr const char* slot_name = "_dsettlement_registers";

// A register, whether somebody works with it, and for what class of models it was read.
template <typename Register>
struct Entry {
  // Lets the register doubt. It is read anew in any case then, so it need not own anything any
  // longer, unless somebody works with it. Letting go can run code that reads it again, so the
  // doubt comes after that.
  void doubt() {
    if (!is_busy) content.forget();
    content.doubt();
  }

  Register content;
  bool is_busy = false;
  // The interpreter gives each class a version of its own, and another one with every change.
  unsigned int class_version = 0;
};

unsigned int class_version_of(Handle model) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  return PyUnstable_Type_AssignVersionTag(type) != 0 ? type->tp_version_tag : 0;
}

class Registers : public host::Content {
 public:
  int traverse(visitproc visit, void* argument) const override {
    const int stop = chains.content.traverse(visit, argument);
    return stop != 0 ? stop : verticals.content.traverse(visit, argument);
  }
  void clear() noexcept override {
    chains.content.clear();
    verticals.content.clear();
  }

  Entry<ChainRegister> chains;
  Entry<VerticalRegister> verticals;
};

struct Kept {
  Ref box;
  Registers* registers = nullptr;
};

// The slot is used directly, past what a derived class does with attributes.
Kept registers_of(Handle slot, Handle model) {
  const descrgetfunc read = Py_TYPE(static_cast<PyObject*>(slot))->tp_descr_get;
  if (read == nullptr) return {};
  PyObject* box =
      read(slot, model, reinterpret_cast<PyObject*>(Py_TYPE(static_cast<PyObject*>(model))));
  if (box == nullptr) {
    PyErr_Clear();
    return {};
  }
  Ref kept = Ref::steal(box);
  auto* registers = dynamic_cast<Registers*>(host::content_of(kept));
  return {std::move(kept), registers};
}

Kept registers_made_for(const State& state, Handle model) {
  Kept known = registers_of(state.register_slot, model);
  if (known.registers != nullptr) return known;
  auto content = std::make_unique<Registers>();
  Registers* registers = content.get();
  Ref box = host::make_box(state.box_type, std::move(content));
  const descrsetfunc write = Py_TYPE(state.register_slot.get())->tp_descr_set;
  host::check(write(state.register_slot.get(), model, box.get()));
  return {std::move(box), registers};
}

bool is_plain_list(PyObject* list) {
  return list != nullptr && PyList_CheckExact(list) != 0;
}

// Whether it is noticed when somebody looks at the attributes of the model as a dictionary: another
// base class can bring its own way to it.
bool notices_looks(const State& state, Handle model) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  return _PyType_Lookup(type, state.names.attributes.get()) == state.attributes.get() &&
         _PyType_Lookup(type, state.names.register_slot.get()) == state.register_slot.get();
}

bool has_attributes_alone(Handle model) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(model, nullptr));
  return Py_REFCNT(fields.get()) == 2;  // the model and this function
}

template <auto entry>
void doubt(State& state, Handle model) {
  const Kept kept = registers_of(state.register_slot, model);
  if (kept.registers != nullptr) (kept.registers->*entry).doubt();
}

// The attributes of a model as a dictionary: whoever looks there sees the lists in order, and may
// change them.
PyObject* read_attributes(PyObject* model, void* /*closure*/) {
  return host::guard([&] {
    PyObject* slot = _PyType_Lookup(Py_TYPE(model), host::Name(slot_name).get());
    if (slot != nullptr && Py_IS_TYPE(slot, &PyMemberDescr_Type)) {
      const Kept kept = registers_of(slot, model);
      if (kept.registers != nullptr) {
        kept.registers->chains.doubt();
        kept.registers->verticals.doubt();
      }
    }
    return Ref::steal(PyObject_GenericGetDict(model, nullptr));
  });
}

// Deleting them leaves none, as with any object.
int write_attributes(PyObject* model, PyObject* attributes, void* /*closure*/) {
  const PyObject* done = host::guard([&] {
    static_cast<void>(Ref::steal(read_attributes(model, nullptr)));
    const Ref written = attributes != nullptr ? host::share(attributes) : host::Mapping().done();
    host::check(PyObject_GenericSetDict(model, written.get(), nullptr));
    return host::none();
  });
  return done == nullptr ? -1 : 0;  // None lives for ever, and is not counted
}

// Gives the class of models an attribute `__dict__` of the kind that Python itself gives to the
// first class of a line; tools that look at objects without running their code know that kind.
Ref watch_attributes(Handle model_class) {
  static PyGetSetDef definition{
      .name = "__dict__",
      .get = read_attributes,
      .set = write_attributes,
      .doc = "dictionary for instance variables",
      .closure = nullptr,
  };
  auto* type = reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(model_class));
  Ref descriptor = Ref::steal(PyDescr_NewGetSet(type, &definition));
  host::check(PyDict_SetItemString(type->tp_dict, definition.name, descriptor.get()));
  PyType_Modified(type);
  return descriptor;
}

// What is copied or pickled goes without the registers: the copy makes its own.
Ref get_state(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  doubt<&Registers::chains>(state, self);
  doubt<&Registers::verticals>(state, self);
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

// The lists of a model that can be registered; nothing for any other model.
std::optional<ChainRegister::Source> chains_of(const State& state, Handle model) {
  if (!host::gets_plainly(model, state.names.private_curves, state.curves_property.get()) ||
      !are_classes_as_made(state) || !notices_looks(state, model)) {
    return std::nullopt;
  }
  ChainRegister::Source lists{state.boundaries.peek(model), state.pl_lines.peek(model)};
  if (!is_plain_list(lists.boundaries.get()) || !is_plain_list(lists.pl_lines.get()) ||
      !has_attributes_alone(model)) {
    return std::nullopt;
  }
  return lists;
}

std::optional<VerticalRegister::Source> verticals_of(const State& state, Handle model) {
  if (!state.model.vertical_as_made.holds() || !notices_looks(state, model)) return std::nullopt;
  VerticalRegister::Source list = state.verticals.peek(model);
  if (!is_plain_list(list.get()) || !has_attributes_alone(model)) return std::nullopt;
  return list;
}

// A register that holds for what `look` finds in the model, if need be after reading it anew.
template <auto entry, typename Look>
auto up_to_date(const State& state, Handle model, Look look) {
  using Register = decltype((std::declval<Registers>().*entry).content);
  auto source = look(state, model);
  if (!source) return InUse<Register>();
  auto [box, registers] = registers_made_for(state, model);
  Entry<Register>& known = registers->*entry;
  if (known.is_busy) return InUse<Register>();
  InUse<Register> used(std::move(box), known.content, known.is_busy);
  const unsigned int version = class_version_of(model);
  if (version != 0 && known.class_version == version && used->mirrors(state, *source)) return used;
  // Letting go of what was there before can run code, so the model is looked at again after that.
  source.reset();
  used->forget();
  known.class_version = version;
  const bool holds = used->read(state, [&] { return look(state, model); });
  return holds && class_version_of(model) == version ? std::move(used) : InUse<Register>();
}

}  // namespace

InUse<ChainRegister> chain_register(State& state, Handle model) {
  return up_to_date<&Registers::chains>(state, model, chains_of);
}

InUse<VerticalRegister> vertical_register(State& state, Handle model) {
  return up_to_date<&Registers::verticals>(state, model, verticals_of);
}

void put_boundaries_in_order(State& state, Handle model) {
  const Kept kept = registers_of(state.register_slot, model);
  if (kept.registers != nullptr) kept.registers->chains.content.put_in_order();
}

void add_registers(host::Module& module, State& state, host::ClassBody& body) {
  state.box_type = host::make_box_type(module.object());
  body.add("__slots__", Ref::steal(PyTuple_Pack(1, host::Name(slot_name).get())));
  body.add(state, host::method<get_state>("__getstate__",
                                          "Return what a copy or a pickle of the model is made of.")
                      .returning("Any"));
  const auto add = [&](host::WatchedField& field, Handle descriptor) {
    body.add(PyUnicode_AsUTF8(field.name()), descriptor);
  };
  const Handle owner = module.object();
  add(state.boundaries,
      state.boundaries.watch<State, doubt<&Registers::chains>>(state.field_type, owner, state));
  add(state.pl_lines,
      state.pl_lines.watch<State, doubt<&Registers::chains>>(state.field_type, owner, state));
  add(state.verticals,
      state.verticals.watch<State, doubt<&Registers::verticals>>(state.field_type, owner, state));
}

void remember_for_registers(State& state, Handle model_class) {
  state.register_slot = host::get(model_class, state.names.register_slot);
  state.curves_property = host::get(model_class, state.names.private_curves);
  state.create_curves = host::get(model_class, state.names.create_curves);
  state.create_curve = host::get(model_class, state.names.create_curve);
  state.attributes = watch_attributes(model_class);
}

}  // namespace dsettlement::geometry
