#include "geometry/index/cache.hpp"

#include <utility>

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

void Cache::unlock() noexcept {
  is_locked_ = false;
  if (!is_kept_) clear();
}

bool Cache::update(const State& state, Handle model) {
  // Reading an attribute can run code, that of other attributes' names, so stamps are compared
  // last.
  if (is_current(model) && stamp_ == stamp_of(state, model, looks_)) return true;
  sort();
  clear();
  const Stamp stamp = stamp_of(state, model, looks_);
  if (read(state, model) && is_current(model) && stamp == stamp_of(state, model, looks_)) {
    stamp_ = stamp;
    return true;
  }
  clear();  // without sorting what need not have been sorted
  return false;
}

void Cache::invalidate() {
  sort();
  // Letting go can run code that reads the lists again, so they are looked at after that.
  if (!is_locked_) clear();
  ++looks_;
}

void Cache::sort() {
  for (CachedList& list : lists_) list.sort();
}

int Cache::traverse(visitproc visit, void* arg) const {
  for (const CachedList& list : lists_) {
    if (const int stop = list.traverse(visit, arg)) return stop;
  }
  return 0;
}

void Cache::clear() noexcept {
  stamp_ = Stamp();
  // Letting go of objects can run code that comes back here, so they are out of sight then.
  const auto gone = std::exchange(lists_, {});
}

bool Cache::is_current(Handle model) const {
  for (std::size_t i = 0; i < lists_.size() && fields_[i] != nullptr; ++i) {
    if (!lists_[i].is_complete(fields_[i]->peek(model))) return false;
  }
  return true;
}

bool Cache::read(const State& state, Handle model) {
  is_kept_ = is_reached_by_model_alone(model);
  for (std::size_t i = 0; i < lists_.size() && fields_[i] != nullptr; ++i) {
    Ref list = fields_[i]->peek(model);
    if (!list || PyList_CheckExact(list.get()) == 0) return false;
    is_kept_ = is_kept_ && is_reached_by_model_alone(list);
    lists_[i] = CachedList(std::move(list));
  }
  for (std::size_t i = 0; i < lists_.size() && fields_[i] != nullptr; ++i) {
    const Ref list = lists_[i].list();
    for (Py_ssize_t place = 0; place < PyList_GET_SIZE(list.get()); ++place) {
      const Ref entry = host::share(PyList_GET_ITEM(list.get(), place));
      const Entry entered = enter(state, i, entry);
      if (entered == Entry::refused) return false;
      is_kept_ = is_kept_ && entered == Entry::closed;
    }
  }
  return true;
}

}  // namespace dsettlement::geometry
