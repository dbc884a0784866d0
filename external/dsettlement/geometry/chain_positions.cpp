#include "geometry/chain_positions.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

ChainPositions::ChainPositions(const State& state, Handle model, const host::WatchedField& list,
                               bool twins)
    : state_(state),
      model_(model),
      attribute_(list.name()),
      twins_(twins),
      list_(list.read(model)),
      is_certain_(PyList_CheckExact(list_.get()) != 0 && are_classes_as_made(state)) {
  const Py_ssize_t count = is_certain_ ? PyList_GET_SIZE(list_.get()) : 0;
  for (Py_ssize_t i = 0; i < count && is_certain_; ++i) enter(PyList_GET_ITEM(list_.get(), i), i);
}

Ref ChainPositions::of(Handle chain) {
  if (const std::optional<Py_ssize_t> position = find(chain)) {
    return Ref::steal(PyLong_FromSsize_t(*position));
  }
  return host::call_method(host::get(model_, attribute_), state_.names.index, chain);
}

void ChainPositions::enter(Handle chain, Py_ssize_t position) {
  if (twins_) {
    const std::optional<ChainKey> key = key_of_chain(state_, chain);
    if (!key) return doubt();
    position = by_key_.enter(*key, chain, position).position;
  }
  by_object_.try_add(chain, position);
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
