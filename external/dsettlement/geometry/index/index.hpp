// The index of a two-dimensional model: what a search through its lists would find, without the
// search.
//
// An operation asks for a lease. While it has one, the index answers for the model as it is, since
// nothing of an application runs. If there is none, the model must be searched: because something
// in it is not plain, or because an application has put something of its own in the way.
#pragma once

#include <utility>

#include "geometry/index/chain_cache.hpp"
#include "geometry/index/vertical_cache.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

template <typename Cache>
class Lease {
 public:
  Lease() = default;
  // Takes over the lock of a cache that `owner` keeps alive.
  Lease(host::Ref owner, Cache& cache) : owner_(std::move(owner)), cache_(&cache) {}
  Lease(Lease&& other) noexcept
      : owner_(std::move(other.owner_)), cache_(std::exchange(other.cache_, nullptr)) {}
  Lease& operator=(Lease&&) = delete;
  ~Lease() {
    if (cache_ != nullptr) cache_->unlock();
  }

  explicit operator bool() const noexcept { return cache_ != nullptr; }
  Cache* operator->() const noexcept { return cache_; }
  Cache& operator*() const noexcept { return *cache_; }

 private:
  host::Ref owner_;
  Cache* cache_ = nullptr;
};

[[nodiscard]] Lease<ChainCache> lease_chains(const State& state, host::Handle model);
[[nodiscard]] Lease<VerticalCache> lease_verticals(const State& state, host::Handle model);

// The boundaries of a model, in order, for an operation that neither changes them nor hands
// them on.
[[nodiscard]] host::Ref boundaries_of(const State& state, host::Handle model);

// Gives the class of models a place for the index, and lists whose use is noticed.
void add_index(host::Module& module, State& state, host::ClassBody& body);

// To be called with the finished class.
void remember_model_class(State& state, host::Handle model_class);

}  // namespace dsettlement::geometry
