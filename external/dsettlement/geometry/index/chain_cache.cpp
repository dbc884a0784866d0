#include "geometry/index/chain_cache.hpp"

#include "geometry/index/plain.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

Ref ChainCache::curve(const State& state, const CurveKey& key) const {
  Ref found;
  static_cast<void>(curves_.find(HashOf()(key), [&](Place place) {
    found = curve_at(state, place);
    if (found && key_of_curve(state, found) != key) found = Ref();
    return static_cast<bool>(found);
  }));
  return found;
}

Ref ChainCache::curve_at(const State& state, Place place) const {
  const Ref curves = curves_of_plain_chain(state, lists_[place.list].entries()[place.chain]);
  const auto position = static_cast<Py_ssize_t>(place.position);
  if (!curves || position >= PyList_GET_SIZE(curves.get())) return {};
  return host::share(PyList_GET_ITEM(curves.get(), position));
}

Ref ChainCache::chain(const State& state, const CachedList& list, const ChainKey& key) {
  return list.find(HashOf()(key),
                   [&](const Ref& entry) { return key_of_chain(state, entry) == key; });
}

bool ChainCache::add_boundary(const State& state, Handle model, const ChainKey& key,
                              Handle boundary) {
  return add(state, model, [&](bool is_sorted_later) {
    lists_[boundaries].remember(HashOf()(key), boundary);
    enter_curves(state, boundaries, key);
    lists_[boundaries].append(boundary, area_of(key), is_sorted_later);
  });
}

bool ChainCache::add_pl_line(const State& state, Handle model, const ChainKey& key,
                             Handle pl_line) {
  return add(state, model, [&](bool is_sorted_later) {
    lists_[pl_lines].remember(HashOf()(key), pl_line);
    enter_curves(state, pl_lines, key);
    lists_[pl_lines].append(pl_line, in_order_of_creation, is_sorted_later);
  });
}

void ChainCache::clear() noexcept {
  curves_ = {};
  Cache::clear();
}

Cache::Entry ChainCache::enter(const State& state, std::size_t list, Handle chain) {
  const std::optional<ChainKey> key = key_of_chain(state, chain);
  if (!key || ChainCache::chain(state, lists_[list], *key)) return Entry::refused;
  const double number = list == boundaries ? area_of(*key) : in_order_of_creation;
  if (!lists_[list].enter(HashOf()(*key), chain, number)) return Entry::refused;
  enter_curves(state, list, *key);
  return is_reached_by_chain_alone(state, chain) ? Entry::closed : Entry::reachable;
}

void ChainCache::enter_curves(const State& state, std::size_t list, const ChainKey& key) {
  const std::size_t chain = lists_[list].entries().size() - 1;
  for (std::uint32_t i = 0; i < key.size(); ++i) {
    if (curve(state, key[i])) continue;
    curves_.add(HashOf()(key[i]),
                Place{static_cast<std::uint32_t>(list), static_cast<std::uint32_t>(chain), i});
  }
}

}  // namespace dsettlement::geometry
