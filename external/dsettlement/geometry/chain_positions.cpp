#include "geometry/chain_positions.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

ChainPositions::ChainPositions(const State& state, Handle model, const host::WatchedField& list)
    : state_(state), model_(model), attribute_(list.name()) {
  const Ref chains = list.peek(model);
  is_certain_ = chains && PyList_CheckExact(chains.get()) != 0 && are_classes_as_made(state);
  if (!is_certain_) return;
  entries_ = Ref::steal(PyList_AsTuple(chains.get()));
  const Py_ssize_t count = PyTuple_GET_SIZE(entries_.get());
  for (Py_ssize_t i = 0; i < count && is_certain_; ++i)
    enter(PyTuple_GET_ITEM(entries_.get(), i), i);
}

Ref ChainPositions::of(Handle chain) {
  if (const std::optional<Py_ssize_t> position = find(chain)) {
    return Ref::steal(PyLong_FromSsize_t(*position));
  }
  return host::call_method(host::get(model_, attribute_), state_.names.index, chain);
}

void ChainPositions::enter(Handle chain, Py_ssize_t position) {
  const std::optional<ChainKey> key = key_of_chain(state_, chain);
  if (!key) return doubt();
  by_object_.try_add(chain, by_key_.enter(*key, chain, position).position);
}

std::optional<Py_ssize_t> ChainPositions::find(Handle chain) {
  if (!is_certain_) return std::nullopt;
  if (const Py_ssize_t* position = by_object_.find(chain)) return *position;
  const std::optional<ChainKey> key = key_of_chain(state_, chain);
  if (!key) doubt();
  const ChainIndex::Entry* entry = key ? by_key_.find(*key, chain) : nullptr;
  return entry == nullptr ? std::nullopt : std::optional(entry->position);
}

}  // namespace dsettlement::geometry
