// Finds a boundary or a pl-line by its curves.
#pragma once

#include <optional>
#include <unordered_map>

#include "geometry/plain.hpp"

namespace dsettlement::geometry {

// A hash of a chain's curves that is the same for equal chains; nothing for a chain that is not
// plain throughout.
[[nodiscard]] std::optional<std::size_t> hash_of_chain(const State& state, host::Handle chain);

// Plain chains with their positions; of equal ones the one that was entered first.
class ChainIndex {
 public:
  struct Entry {
    host::Ref chain;
    Py_ssize_t position;
  };

  // Enters a chain with its hash, unless an equal one is there.
  void enter(std::size_t hash, host::Handle chain, Py_ssize_t position) {
    if (find(hash, chain) == nullptr) entries_.emplace(hash, Entry{host::share(chain), position});
  }

  // The entry that is the chain or equals it, or null.
  [[nodiscard]] const Entry* find(std::size_t hash, host::Handle chain) const;

  int traverse(visitproc visit, void* argument) const;

 private:
  std::unordered_multimap<std::size_t, Entry> entries_;
};

}  // namespace dsettlement::geometry
