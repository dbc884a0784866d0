// What boundaries and pl-lines a model has, with their curves, found without searching.
#pragma once

#include <vector>

#include "geometry/chain_index.hpp"
#include "geometry/late_order.hpp"
#include "geometry/mirror.hpp"

namespace dsettlement::geometry {

// Mirrors a model's lists of boundaries and pl-lines. It holds as long as nobody but this register
// has had its hands on the lists or on the objects in them.
class ChainRegister : public Mirror<ChainRegister> {
 public:
  struct Source {
    host::Ref boundaries;
    host::Ref pl_lines;
  };

  // Whether the register holds for these lists.
  [[nodiscard]] bool mirrors(const State& state, const Source& source) const;

  // Puts the boundaries in order for somebody who is about to look at them.
  void put_in_order() { order_.put(source_.boundaries.get()); }

  // Whether there are equal curves, or equal chains, that are different objects.
  [[nodiscard]] bool has_twins() const noexcept { return has_twins_; }

  // The curve of the model with this key, or an empty Ref.
  [[nodiscard]] host::Ref curve(const State& state, const CurveKey& key) const;

  // The chain that equals this one, or an empty Ref.
  [[nodiscard]] host::Ref boundary(const ChainKey& key, host::Handle boundary) const;
  [[nodiscard]] host::Ref pl_line(const ChainKey& key, host::Handle pl_line) const;

  // Adds a new boundary or a new pl-line. The answer is no, and nothing has happened, if the
  // register would not hold with it.
  [[nodiscard]] bool add_boundary(const State& state, const ChainKey& key, host::Handle boundary);
  [[nodiscard]] bool add_pl_line(const State& state, const ChainKey& key, host::Handle pl_line);

  int traverse(visitproc visit, void* argument) const;
  void clear() noexcept;

 private:
  friend Mirror;
  [[nodiscard]] bool take(const State& state, Source source);
  [[nodiscard]] bool read_lists(const State& state);
  [[nodiscard]] bool read_boundary(const State& state, host::Handle boundary);
  [[nodiscard]] bool read_pl_line(const State& state, host::Handle pl_line);
  void enter(const State& state, ChainIndex& index, const ChainKey& key, host::Handle chain);

  // Where a curve stands. It is looked at there again each time, so that the register need not own
  // every curve.
  struct Place {
    std::uint32_t chain;  // in the order in which the chains were entered
    std::uint32_t position;
  };
  [[nodiscard]] host::Ref curve_at(const State& state, Place place) const;

  bool has_twins_ = false;
  Source source_;
  std::uint64_t changes_ = 0;
  std::vector<host::Ref> chains_;
  HashedList<Place> curves_;
  ChainIndex boundaries_;
  ChainIndex pl_lines_;
  LateOrder order_;  // of the boundaries, by area
  Py_ssize_t pl_line_count_ = 0;
};

}  // namespace dsettlement::geometry
