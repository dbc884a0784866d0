#include "geometry/chain_positions.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

ChainPositions::ChainPositions(const State& state, Handle model, Handle list)
    : state_(state), model_(model), attribute_(list), list_(host::get(model, list)) {
  is_certain_ = PyList_CheckExact(list_.get()) != 0 && are_classes_as_made(state);
  const Py_ssize_t count = is_certain_ ? PyList_GET_SIZE(list_.get()) : 0;
  for (Py_ssize_t i = 0; i < count && is_certain_; ++i) enter(PyList_GET_ITEM(list_.get(), i), i);
}

Ref ChainPositions::of(Handle chain) {
  if (const ChainIndex::Entry* entry = find(chain)) {
    return Ref::steal(PyLong_FromSsize_t(entry->position));
  }
  return host::call_method(host::get(model_, attribute_), state_.names.index, chain);
}

void ChainPositions::enter(Handle chain, Py_ssize_t position) {
  const std::optional<std::size_t> hash = hash_of_chain(state_, chain);
  if (hash) {
    index_.enter(*hash, chain, position);
  } else {
    is_certain_ = false;
  }
}

const ChainIndex::Entry* ChainPositions::find(Handle chain) {
  if (!is_certain_) return nullptr;
  const std::optional<std::size_t> hash = hash_of_chain(state_, chain);
  if (hash) return index_.find(*hash, chain);
  is_certain_ = false;
  return nullptr;
}

}  // namespace dsettlement::geometry
