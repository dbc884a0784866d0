// The boundaries and pl-lines of a model with their curves, found without searching.
#pragma once

#include "geometry/index/cache.hpp"
#include "geometry/index/key.hpp"

namespace dsettlement::geometry {

class ChainCache : public Cache {
 public:
  explicit ChainCache(const State& state) : Cache(state.boundaries, &state.pl_lines) {}

  // The first curve of the model with this key, or an empty Ref.
  [[nodiscard]] host::Ref curve(const State& state, const CurveKey& key) const;

  // The chain of the model with these curves, or an empty Ref.
  [[nodiscard]] host::Ref boundary(const State& state, const ChainKey& key) const {
    return chain(state, lists_[boundaries], key);
  }
  [[nodiscard]] host::Ref pl_line(const State& state, const ChainKey& key) const {
    return chain(state, lists_[pl_lines], key);
  }

  // Adds a new chain that nobody else has yet. False, and nothing has happened, if the lists have
  // been touched meanwhile.
  [[nodiscard]] bool add_boundary(const State& state, host::Handle model, const ChainKey& key,
                                  host::Handle boundary);
  [[nodiscard]] bool add_pl_line(const State& state, host::Handle model, const ChainKey& key,
                                 host::Handle pl_line);

  // The lists, in order.
  [[nodiscard]] host::Ref boundary_list() { return sort(), lists_[boundaries].list(); }
  [[nodiscard]] host::Ref pl_line_list() const { return lists_[pl_lines].list(); }

  void clear() noexcept override;

 private:
  static constexpr std::size_t boundaries = 0;
  static constexpr std::size_t pl_lines = 1;

  [[nodiscard]] Entry enter(const State& state, std::size_t list, host::Handle chain) override;
  [[nodiscard]] static host::Ref chain(const State& state, const CachedList& list,
                                       const ChainKey& key);
  void enter_curves(const State& state, std::size_t list, const ChainKey& key);

  // Where a curve stands. It is looked at there again each time, so that the index need not own
  // every curve.
  struct Place {
    std::uint32_t list : 1;
    std::uint32_t chain : 31;  // in the order in which the chains were entered
    std::uint32_t position;
  };
  [[nodiscard]] host::Ref curve_at(const State& state, Place place) const;

  // The number that pl-lines are sorted by.
  static constexpr double in_order_of_creation = 0.0;

  HashedList<Place> curves_;
};

}  // namespace dsettlement::geometry
