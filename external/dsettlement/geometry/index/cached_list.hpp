// What is known of one list of a model.
#pragma once

#include "geometry/index/deferred_sort.hpp"
#include "geometry/index/hashed_list.hpp"
#include "host/ref.hpp"

namespace dsettlement::geometry {

// The list that was read and the entries that were in it, found by the hash of their keys. No two
// entries are equal.
class CachedList {
 public:
  CachedList() = default;
  explicit CachedList(host::Ref list) : list_(std::move(list)) {}

  [[nodiscard]] const host::Ref& list() const noexcept { return list_; }

  // Whether a list is the one that was read, with all that was read and added.
  [[nodiscard]] bool is_complete(const host::Ref& list) const;

  // Takes in the next entry of the list, with the number that it is sorted by. False if the list is
  // not in order.
  [[nodiscard]] bool enter(std::uint64_t hash, host::Handle entry, double number);

  // Adds a new entry to the list, in two steps: what is known of it, and then the entry itself, at
  // its place unless the list is sorted later. So the list has nothing of what memory ran out for
  // on the way.
  void remember(std::uint64_t hash, host::Handle entry);
  void append(host::Handle entry, double number, bool is_sorted_later);

  // The entry with this hash that `is` says yes to, or an empty Ref.
  template <typename Is>
  [[nodiscard]] host::Ref find(std::uint64_t hash, Is&& is) const {
    const host::Ref* entry = entries_.find(hash, is);
    return entry == nullptr ? host::Ref() : *entry;
  }

  // The entries in the order in which they came.
  [[nodiscard]] const HashedList<host::Ref>& entries() const noexcept { return entries_; }

  // Puts the list in order for somebody who is about to look at it.
  void sort() { order_.sort(list_.get()); }

  int traverse(visitproc visit, void* argument) const;

 private:
  host::Ref list_;
  HashedList<host::Ref> entries_;
  DeferredSort order_;
};

}  // namespace dsettlement::geometry
