// The verticals of a model, found without searching.
#pragma once

#include "geometry/index/cache.hpp"

namespace dsettlement::geometry {

class VerticalCache : public Cache {
 public:
  explicit VerticalCache(const State& state) : Cache(state.verticals) {}

  // The vertical at x, or an empty Ref.
  [[nodiscard]] host::Ref at(const State& state, double x) const;

  // Adds a new vertical. False, and nothing has happened, if the list has been touched meanwhile.
  [[nodiscard]] bool add_vertical(const State& state, host::Handle model, host::Handle vertical);

 private:
  [[nodiscard]] Entry enter(const State& state, std::size_t list, host::Handle vertical) override;
};

}  // namespace dsettlement::geometry
