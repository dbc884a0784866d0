// Entries in the order in which they were added, found by their hash.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <vector>

namespace dsettlement::geometry {

// Entries lie side by side and the table beside them holds little more than their places, so that
// a hundred thousand of them are found with few steps into cold memory.
template <typename Entry>
class HashedList {
 public:
  // The first entry with this hash that `is` says yes to, or null.
  template <typename Is>
  [[nodiscard]] const Entry* find(std::uint64_t hash, Is&& is) const {
    if (slots_.empty()) return nullptr;
    const std::uint32_t mark = mark_of(hash);
    for (std::size_t i = mark & mask(); slots_[i].place != 0; i = (i + 1) & mask()) {
      if (slots_[i].mark == mark && is(entries_[slots_[i].place - 1])) {
        return &entries_[slots_[i].place - 1];
      }
    }
    return nullptr;
  }

  // Adds an entry, whether or not there is another like it.
  const Entry& add(std::uint64_t hash, Entry entry) {
    if (2 * (entries_.size() + 1) > slots_.size()) grow();
    entries_.push_back(std::move(entry));
    put({mark_of(hash), static_cast<std::uint32_t>(entries_.size())});
    return entries_.back();
  }

  // The entries in the order in which they were added.
  [[nodiscard]] const Entry& operator[](std::size_t place) const { return entries_[place]; }
  [[nodiscard]] std::size_t size() const { return entries_.size(); }

  void reserve(std::size_t count) {
    entries_.reserve(count);
    while (slots_.size() < 2 * count) grow();
  }

  [[nodiscard]] auto begin() const { return entries_.begin(); }
  [[nodiscard]] auto end() const { return entries_.end(); }

 private:
  // An entry's place counted from 1, so that 0 marks a free slot.
  struct Slot {
    std::uint32_t mark = 0;
    std::uint32_t place = 0;
  };

  static std::uint32_t mark_of(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
  }

  [[nodiscard]] std::size_t mask() const { return slots_.size() - 1; }

  void put(Slot slot) {
    std::size_t i = slot.mark & mask();
    while (slots_[i].place != 0) i = (i + 1) & mask();
    slots_[i] = slot;
  }

  void grow() {
    constexpr std::size_t fewest = 8;
    constexpr std::size_t most = std::size_t{1} << 32U;
    if (slots_.size() >= most) throw std::length_error("too many entries");
    std::vector<Slot> before(slots_.empty() ? fewest : 2 * slots_.size());
    before.swap(slots_);
    for (const Slot& slot : before) {
      if (slot.place != 0) put(slot);
    }
  }

  std::vector<Entry> entries_;
  std::vector<Slot> slots_;  // a power of two of them, or none; at most half are taken
};

// Values by key.
template <typename Key, typename Value, typename HashOf>
class HashedMap {
 public:
  struct Entry {
    Key key;
    Value value;
  };

  [[nodiscard]] const Value* find(const Key& key) const {
    const auto* entry = entries_.find(HashOf()(key), [&](const Entry& e) { return e.key == key; });
    return entry == nullptr ? nullptr : &entry->value;
  }

  // The value that is there, or else this one, which then is.
  const Value& try_add(const Key& key, Value value) {
    if (const Value* known = find(key)) return *known;
    return entries_.add(HashOf()(key), Entry{key, std::move(value)}).value;
  }

  void reserve(std::size_t count) { entries_.reserve(count); }

  [[nodiscard]] auto begin() const { return entries_.begin(); }
  [[nodiscard]] auto end() const { return entries_.end(); }

 private:
  HashedList<Entry> entries_;
};

}  // namespace dsettlement::geometry
