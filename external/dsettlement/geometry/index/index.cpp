#include "geometry/index/index.hpp"

#include <memory>

#include "host/box.hpp"
#include "host/containers.hpp"
#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

// The index of a model stands in a slot of its own and not among its attributes, which applications
// look at, copy and pickle.
class Index : public host::Content {
 public:
  explicit Index(const State& state) : chains(state), verticals(state) {}

  int traverse(visitproc visit, void* argument) const override {
    const int stop = chains.traverse(visit, argument);
    return stop != 0 ? stop : verticals.traverse(visit, argument);
  }
  void clear() noexcept override {
    chains.clear();
    verticals.clear();
  }

  ChainCache chains;
  VerticalCache verticals;
};

// The index of a model, if it has one, and what keeps it alive.
struct Kept {
  Ref box;
  Index* index = nullptr;
};

Kept index_in(Handle slot, Handle model) {
  Ref box = host::in_slot(slot, model);
  auto* index = dynamic_cast<Index*>(host::content_of(box));
  return {std::move(box), index};
}

Kept index_made_for(const State& state, Handle model) {
  Kept known = index_in(state.index_slot, model);
  if (known.index != nullptr) return known;
  auto content = std::make_unique<Index>(state);
  Index* index = content.get();
  Ref box = host::make_box(state.box_type, std::move(content));
  host::put_in_slot(state.index_slot, model, box);
  return {std::move(box), index};
}

template <auto cache>
auto lease(const State& state, Handle model) {
  using Of = Lease<std::remove_reference_t<decltype(std::declval<Index&>().*cache)>>;
  if (!are_classes_as_made(state) || !is_model_as_made(state, model)) return Of();
  auto [box, index] = index_made_for(state, model);
  if (!(index->*cache).lock()) return Of();
  Of locked(std::move(box), index->*cache);
  return locked->update(state, model) ? std::move(locked) : Of();
}

// What is done when somebody uses one of the watched lists.
template <auto cache>
void invalidate(State& state, Handle model) {
  const Kept kept = index_in(state.index_slot, model);
  if (kept.index != nullptr) (kept.index->*cache).invalidate();
}

// The attributes of a model as a dictionary: whoever looks there sees the lists in order, and may
// change them.
PyObject* read_attributes(PyObject* model, void* /*closure*/) {
  return host::guard([&] {
    PyObject* slot = host::member_of(Py_TYPE(model), host::Name(index_slot_name));
    if (slot != nullptr && Py_IS_TYPE(slot, &PyMemberDescr_Type)) {
      const Kept kept = index_in(slot, model);
      if (kept.index != nullptr) {
        kept.index->chains.invalidate();
        kept.index->verticals.invalidate();
      }
    }
    return host::own_attributes(model);
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
void watch_attributes(Handle model_class) {
  static PyGetSetDef definition{
      .name = "__dict__",
      .get = read_attributes,
      .set = write_attributes,
      .doc = "dictionary for instance variables",
      .closure = nullptr,
  };
  PyTypeObject* type = host::as_type(model_class);
  const Ref descriptor = Ref::steal(PyDescr_NewGetSet(type, &definition));
  host::put_member(type, definition.name, descriptor);
}

// What is copied or pickled goes without the index: the copy makes its own.
Ref get_state(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  invalidate<&Index::chains>(state, self);
  invalidate<&Index::verticals>(state, self);
  Ref members = host::call(host::super(state.model_2d.original(), self, names.get_state));
  if (PyTuple_CheckExact(members.get()) == 0 || PyTuple_GET_SIZE(members.get()) != 2) {
    return members;
  }
  // The attributes, and what stands in slots.
  const Ref slots = host::item(members, 1);
  if (PyDict_CheckExact(slots.get()) != 0 && host::contains(slots, names.private_index_slot)) {
    host::check(PyDict_DelItem(slots.get(), names.private_index_slot.get()));
    if (PyDict_GET_SIZE(slots.get()) == 0) return host::item(members, 0);
  }
  return members;
}

}  // namespace

Lease<ChainCache> lease_chains(const State& state, Handle model) {
  return lease<&Index::chains>(state, model);
}

Lease<VerticalCache> lease_verticals(const State& state, Handle model) {
  return lease<&Index::verticals>(state, model);
}

Ref boundaries_of(const State& state, Handle model) {
  const Kept kept = index_in(state.index_slot, model);
  if (kept.index != nullptr) kept.index->chains.sort();
  return state.boundaries.read(model);
}

void add_index(host::Module& module, State& state, host::ClassBody& body) {
  state.box_type = host::make_box_type(module.object());
  body.add("__slots__", Ref::steal(PyTuple_Pack(1, host::Name(index_slot_name).get())));
  body.add(state, host::method<get_state>("__getstate__",
                                          "Return what a copy or a pickle of the model is made of.")
                      .returning("Any"));
  const auto add = [&](host::WatchedField& field, Handle descriptor) {
    body.add(PyUnicode_AsUTF8(field.name()), descriptor);
  };
  const Handle owner = module.object();
  add(state.boundaries,
      state.boundaries.watch<State, invalidate<&Index::chains>>(state.field_type, owner, state));
  add(state.pl_lines,
      state.pl_lines.watch<State, invalidate<&Index::chains>>(state.field_type, owner, state));
  add(state.verticals,
      state.verticals.watch<State, invalidate<&Index::verticals>>(state.field_type, owner, state));
}

void remember_model_class(State& state, Handle model_class) {
  watch_attributes(model_class);
  state.index_slot = host::get(model_class, state.names.private_index_slot);
  state.model_members.remember(model_class);
}

}  // namespace dsettlement::geometry
