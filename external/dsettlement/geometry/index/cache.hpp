// What the indexes of chains and of verticals have in common: they know some lists of a model for
// as long as nobody may have touched them.
#pragma once

#include <array>
#include <optional>

#include "geometry/index/cached_list.hpp"
#include "geometry/index/trust.hpp"

namespace dsettlement::geometry {

class Cache {
 public:
  Cache(const Cache&) = delete;
  Cache& operator=(const Cache&) = delete;
  virtual ~Cache() = default;

  // Begins and ends the use by an operation, for the time of which the cache stays as it is. Only
  // one operation at a time gets it: what is asked for in the middle of that is searched for.
  [[nodiscard]] bool lock() noexcept { return !std::exchange(is_locked_, true); }
  void unlock() noexcept;

  // Reads the lists of the model, unless all is known already. False if the model must be searched.
  [[nodiscard]] bool update(const State& state, host::Handle model);

  // Lets somebody who may change the lists have them, in order.
  void invalidate();

  // Puts the lists in order for somebody who is about to look at them.
  void sort();

  int traverse(visitproc visit, void* argument) const;
  virtual void clear() noexcept;

 protected:
  // For one or two lists.
  explicit Cache(const host::WatchedField& first, const host::WatchedField* second = nullptr)
      : fields_{&first, second} {}

  enum class Entry : std::uint8_t {
    refused,    // cannot be indexed
    reachable,  // somebody could change it without being noticed
    closed      // nobody could
  };
  [[nodiscard]] virtual Entry enter(const State& state, std::size_t list, host::Handle entry) = 0;

  // Adds a new entry to a list by append(bool is_sorted_later): who holds on to the list sees it in
  // order at once. False, and nothing has happened, if the list is not known any more.
  template <typename Append>
  [[nodiscard]] bool add(const State& state, host::Handle model, Append&& append) {
    if (stamp_ != stamp_of(state, model, looks_)) return false;
    // In between the cache is not valid, should anything fail.
    const Stamp stamp = std::exchange(stamp_, Stamp());
    append(is_kept_);
    stamp_ = stamp;
    return true;
  }

  std::array<CachedList, 2> lists_;

 private:
  [[nodiscard]] bool is_current(host::Handle model) const;
  [[nodiscard]] bool read(const State& state, host::Handle model);

  std::array<const host::WatchedField*, 2> fields_;
  Stamp stamp_;              // for which the lists are known; equal to nothing if they aren't
  std::uint64_t looks_ = 0;  // at the lists
  bool is_kept_ = false;  // beyond the operation: nobody can touch the lists without being noticed
  bool is_locked_ = false;
};

}  // namespace dsettlement::geometry
