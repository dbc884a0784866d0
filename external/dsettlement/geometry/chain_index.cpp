#include "geometry/chain_index.hpp"

#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;

const ChainIndex::Entry* ChainIndex::find(const ChainKey& key, Handle chain) const {
  return entries_.find(HashOf()(key), [&](const Entry& entry) {
    return entry.chain == static_cast<PyObject*>(chain) || host::compare(entry.chain, Py_EQ, chain);
  });
}

}  // namespace dsettlement::geometry
