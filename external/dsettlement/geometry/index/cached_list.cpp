#include "geometry/index/cached_list.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

bool CachedList::is_complete(const Ref& list) const {
  return list && list.get() == list_.get() && PyList_GET_SIZE(list.get()) == order_.size();
}

bool CachedList::enter(std::uint64_t hash, Handle entry, double number) {
  entries_.add(hash, host::share(entry));
  order_.append(number);
  return order_.is_sorted();
}

void CachedList::remember(std::uint64_t hash, Handle entry) {
  entries_.add(hash, host::share(entry));
}

void CachedList::append(Handle entry, double number, bool is_sorted_later) {
  if (is_sorted_later) {
    order_.add(list_, entry, number);
  } else {
    order_.insert(list_, entry, number);
  }
}

int CachedList::traverse(visitproc visit, void* arg) const {
  Py_VISIT(list_.get());
  for (const Ref& entry : entries_) Py_VISIT(entry.get());
  return 0;
}

}  // namespace dsettlement::geometry
