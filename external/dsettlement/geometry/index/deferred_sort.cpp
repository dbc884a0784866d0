#include "geometry/index/deferred_sort.hpp"

#include <algorithm>
#include <iterator>

namespace dsettlement::geometry {

void DeferredSort::append(double number) {
  const bool stays = is_sorted() && (numbers_.empty() || number >= numbers_.back());
  numbers_.push_back(number);
  if (stays) ++sorted_;
}

// Room for one more number, and not for one alone, which would copy all each time.
void DeferredSort::make_room() {
  constexpr std::size_t few = 8;
  if (numbers_.size() == numbers_.capacity()) numbers_.reserve(2 * numbers_.size() + few);
}

void DeferredSort::add(host::Handle list, host::Handle entry, double number) {
  make_room();
  host::check(PyList_Append(list, entry));
  append(number);
}

void DeferredSort::insert(host::Handle list, host::Handle entry, double number) {
  make_room();
  const auto place = std::ranges::upper_bound(numbers_, number);
  host::check(PyList_Insert(list, place - numbers_.begin(), entry));
  numbers_.insert(place, number);
  ++sorted_;
}

void DeferredSort::sort(PyObject* list) {
  if (is_sorted() || list == nullptr || PyList_GET_SIZE(list) != size()) return;
  // With its place, no entry is like another, so that equal numbers keep their order.
  struct Entry {
    double number;
    Py_ssize_t place;
    PyObject* object;
    bool operator<(const Entry& other) const {
      return number != other.number ? number < other.number : place < other.place;
    }
  };
  std::vector<Entry> entries;
  entries.reserve(numbers_.size());
  for (Py_ssize_t i = 0; i < size(); ++i) {
    entries.push_back({numbers_[static_cast<std::size_t>(i)], i, PyList_GET_ITEM(list, i)});
  }
  const auto added = entries.begin() + static_cast<std::ptrdiff_t>(sorted_);
  std::sort(added, entries.end());
  std::vector<Entry> sorted;
  sorted.reserve(entries.size());
  std::merge(entries.begin(), added, added, entries.end(), std::back_inserter(sorted));
  // The entries change places among themselves, so that each keeps its count.
  for (std::size_t i = 0; i < sorted.size(); ++i) {
    numbers_[i] = sorted[i].number;
    PyList_SET_ITEM(list, static_cast<Py_ssize_t>(i), sorted[i].object);
  }
  sorted_ = numbers_.size();
}

}  // namespace dsettlement::geometry
