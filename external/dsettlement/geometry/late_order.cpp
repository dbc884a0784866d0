#include "geometry/late_order.hpp"

#include <algorithm>
#include <utility>

namespace dsettlement::geometry {

void LateOrder::append(double number) {
  const bool stays = is_kept() && (numbers_.empty() || number >= numbers_.back());
  numbers_.push_back(number);
  if (stays) ++sorted_;
}

void LateOrder::put(PyObject* list) {
  if (is_kept() || list == nullptr || PyList_GET_SIZE(list) != size()) return;
  using Entry = std::pair<double, PyObject*>;
  std::vector<Entry> entries;
  entries.reserve(numbers_.size());
  for (Py_ssize_t i = 0; i < size(); ++i) {
    entries.emplace_back(numbers_[static_cast<std::size_t>(i)], PyList_GET_ITEM(list, i));
  }
  const auto added = entries.begin() + static_cast<std::ptrdiff_t>(sorted_);
  std::ranges::stable_sort(added, entries.end(), {}, &Entry::first);
  std::ranges::inplace_merge(entries, added, {}, &Entry::first);
  // The entries change places among themselves, so that each keeps its count.
  for (std::size_t i = 0; i < entries.size(); ++i) {
    numbers_[i] = entries[i].first;
    PyList_SET_ITEM(list, static_cast<Py_ssize_t>(i), entries[i].second);
  }
  sorted_ = numbers_.size();
}

void LateOrder::clear() noexcept {
  numbers_.clear();
  sorted_ = 0;
}

}  // namespace dsettlement::geometry
