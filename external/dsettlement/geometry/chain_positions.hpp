// The positions by which a document refers to boundaries and pl-lines.
#pragma once

#include "geometry/chain_index.hpp"
#include "host/object.hpp"

namespace dsettlement::geometry {

// Positions of the first equal entries of a model's list of chains, as `list.index` finds them:
// out of an index as long as all objects met are plain, by a search from the first other one on.
class ChainPositions {
 public:
  // `list` is the attribute of the model that the list stands in.
  ChainPositions(const State& state, host::Handle model, host::Handle list);

  // The position counted from 0. Raises ValueError if there is no equal entry.
  [[nodiscard]] host::Ref of(host::Handle chain);

  // To be told when an object was met that is not plain.
  void doubt() { is_certain_ = false; }

 private:
  void enter(host::Handle chain, Py_ssize_t position);
  [[nodiscard]] const ChainIndex::Entry* find(host::Handle chain);

  const State& state_;
  host::Handle model_;
  host::Handle attribute_;
  host::Ref list_;
  bool is_certain_;
  ChainIndex index_;
};

}  // namespace dsettlement::geometry
