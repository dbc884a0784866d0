#include "geometry/chain_index.hpp"

#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;

std::optional<std::size_t> hash_of_chain(const State& state, Handle chain) {
  PyObject* curves = curves_of_plain_chain(state, chain);
  if (curves == nullptr) return std::nullopt;
  Hash hash;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(curves); ++i) {
    PyObject* curve = PyList_GET_ITEM(curves, i);
    const std::optional<CurveKey> key = key_of_curve(state, curve);
    if (!key) return std::nullopt;
    if (equals_something(*key)) {
      hash.add(*key);
    } else {
      hash.add(reinterpret_cast<std::uintptr_t>(curve));  // equals itself alone
    }
  }
  return hash.value();
}

const ChainIndex::Entry* ChainIndex::find(std::size_t hash, Handle chain) const {
  const auto [begin, end] = entries_.equal_range(hash);
  for (auto entry = begin; entry != end; ++entry) {
    if (entry->second.chain.get() == static_cast<PyObject*>(chain) ||
        host::compare(entry->second.chain, Py_EQ, chain)) {
      return &entry->second;
    }
  }
  return nullptr;
}

int ChainIndex::traverse(visitproc visit, void* arg) const {
  for (const auto& [hash, entry] : entries_) Py_VISIT(entry.chain.get());
  return 0;
}

}  // namespace dsettlement::geometry
