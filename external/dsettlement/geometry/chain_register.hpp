// What boundaries and pl-lines a model has, with their curves, found without searching.
#pragma once

#include <vector>

#include "geometry/chain_index.hpp"

namespace dsettlement::geometry {

// Mirrors a model's lists of boundaries and pl-lines. It holds as long as nobody but this register
// has had its hands on the lists or on the objects in them.
class ChainRegister {
 public:
  struct Lists {
    PyObject* boundaries;
    PyObject* pl_lines;
  };

  // Whether the register holds for these lists, if need be after reading them anew. It does not as
  // long as something in them is not plain, or somebody else holds on to what can change.
  [[nodiscard]] bool holds(const State& state, Lists lists);

  void doubt() noexcept { is_certain_ = false; }

  // Whether there are equal curves, or equal chains, that are different objects.
  [[nodiscard]] bool has_twins() const noexcept { return has_twins_; }

  // Whether a curve occurs more than once.
  [[nodiscard]] bool shares_curves() const noexcept { return shares_curves_; }

  // The first curve of the model with this key, or null; borrowed.
  [[nodiscard]] PyObject* curve(const State& state, const CurveKey& key) const;

  // Of equal chains the one that was registered; borrowed, or null.
  [[nodiscard]] PyObject* boundary(const ChainKey& key, host::Handle boundary) const;
  [[nodiscard]] PyObject* pl_line(const ChainKey& key, host::Handle pl_line) const;

  // Adds a new boundary at its place by area, or a new pl-line at the end. The answer is no, and
  // nothing has happened, if the register would not hold with it.
  [[nodiscard]] bool add_boundary(const State& state, const ChainKey& key, host::Handle boundary);
  [[nodiscard]] bool add_pl_line(const State& state, const ChainKey& key, host::Handle pl_line);

  int traverse(visitproc visit, void* argument) const;
  void clear() noexcept;

 private:
  [[nodiscard]] bool is_seen(const State& state, Lists lists) const;
  [[nodiscard]] bool read(const State& state, Lists lists);
  [[nodiscard]] bool read_boundary(const State& state, host::Handle boundary);
  [[nodiscard]] bool read_pl_line(const State& state, host::Handle pl_line);
  void enter(const State& state, ChainIndex& index, const ChainKey& key, host::Handle chain);

  // Where a curve stands. It is looked at there again each time, so that the register need not own
  // every curve.
  struct Place {
    std::uint32_t chain;  // in the order in which the chains were entered
    std::uint32_t position;
  };
  [[nodiscard]] PyObject* curve_at(const State& state, Place place) const;

  bool is_certain_ = false;
  bool has_twins_ = false;
  bool shares_curves_ = false;
  Lists lists_{};
  std::uint64_t changes_ = 0;
  std::vector<host::Ref> chains_;
  HashedList<Place> curves_;
  ChainIndex boundaries_;
  ChainIndex pl_lines_;
  std::vector<double> areas_;  // of the boundaries, in their order
  Py_ssize_t pl_line_count_ = 0;
};

}  // namespace dsettlement::geometry
