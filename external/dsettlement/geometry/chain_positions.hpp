// The positions by which a document refers to boundaries and pl-lines.
#pragma once

#include "geometry/chain_index.hpp"
#include "host/object.hpp"

namespace dsettlement::geometry {

// Positions of the first equal entries of a model's list of chains, as `list.index` finds them:
// out of an index as long as all objects met are plain, by a search from the first other one on.
class ChainPositions {
 public:
  ChainPositions(const State& state, host::Handle model, const host::WatchedField& list);

  // The position counted from 0. Raises ValueError if there is no equal entry.
  [[nodiscard]] host::Ref of(host::Handle chain);

  // To be told before anything is met that is not plain: what it does can change the list.
  void doubt() { is_certain_ = false; }

 private:
  void enter(host::Handle chain, Py_ssize_t position);
  [[nodiscard]] std::optional<Py_ssize_t> find(host::Handle chain);

  const State& state_;
  host::Handle model_;
  host::Handle attribute_;
  bool is_certain_ = false;
  host::Ref entries_;  // owns the chains, whatever becomes of the list
  HashedMap<PyObject*, Py_ssize_t, HashOf> by_object_;
  ChainIndex by_key_;
};

}  // namespace dsettlement::geometry
