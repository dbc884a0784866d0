// Finds a boundary or a pl-line by its curves.
#pragma once

#include "geometry/hashed_list.hpp"
#include "geometry/plain.hpp"

namespace dsettlement::geometry {

// Plain chains with their positions; of equal ones the one that was entered first. The chains
// belong to somebody who keeps them for as long as they are in the index.
class ChainIndex {
 public:
  struct Entry {
    PyObject* chain;
    Py_ssize_t position;
  };

  // Enters a chain by its key, unless an equal one is there; returns the entry that is there now.
  const Entry& enter(const ChainKey& key, host::Handle chain, Py_ssize_t position) {
    if (const Entry* known = find(key, chain)) return *known;
    return entries_.add(HashOf()(key), Entry{chain, position});
  }

  // The entry that is the chain or equals it, or null.
  [[nodiscard]] const Entry* find(const ChainKey& key, host::Handle chain) const;

 private:
  HashedList<Entry> entries_;
};

}  // namespace dsettlement::geometry
