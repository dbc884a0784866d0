#include "geometry/index/vertical_cache.hpp"

#include "geometry/index/key.hpp"
#include "geometry/index/plain.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

Ref VerticalCache::at(const State& state, double x) const {
  return lists_[0].find(HashOf()(x),
                        [&](const Ref& vertical) { return x_of_vertical(state, vertical) == x; });
}

bool VerticalCache::add_vertical(const State& state, Handle model, Handle vertical) {
  const std::optional<double> x = x_of_vertical(state, vertical);
  return x && add(state, model, [&](bool is_sorted_later) {
           lists_[0].remember(HashOf()(*x), vertical);
           lists_[0].append(vertical, *x, is_sorted_later);
         });
}

Cache::Entry VerticalCache::enter(const State& state, std::size_t list, Handle vertical) {
  const std::optional<double> x = x_of_vertical(state, vertical);
  if (!x || at(state, *x)) return Entry::refused;
  return lists_[list].enter(HashOf()(*x), vertical, *x) ? Entry::closed : Entry::refused;
}

}  // namespace dsettlement::geometry
