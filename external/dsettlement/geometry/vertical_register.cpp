#include "geometry/vertical_register.hpp"

#include <utility>

#include "geometry/plain.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

std::optional<double> x_of_plain_vertical(const State& state, Handle vertical) {
  if (!state.model.vertical_as_made.is_class_of(vertical)) return std::nullopt;
  return plain_field(vertical, state.names.private_x);
}

bool VerticalRegister::mirrors(const State& state, const Source& source) const {
  return certainty_ && changes_ == state.model.vertical_changes.count &&
         source.get() == source_.get() && PyList_GET_SIZE(source.get()) == order_.size();
}

bool VerticalRegister::take(const State& state, Source source) {
  if (Py_REFCNT(source.get()) != 2) return false;  // the model and this reference
  source_ = std::move(source);
  changes_ = state.model.vertical_changes.count;
  return read_list(state);
}

std::optional<Ref> VerticalRegister::at(const State& state, double x) const {
  const Ref* known = by_x_.find(x);
  if (known == nullptr) return Ref();
  const Ref vertical = *known;
  return x_of_plain_vertical(state, vertical) == x ? std::optional(vertical) : std::nullopt;
}

bool VerticalRegister::add(double x, Handle vertical) {
  if (!certainty_) return false;
  return certainty_.regain([&] {
    by_x_.try_add(x, host::share(vertical));
    order_.add(source_, vertical, x);
    return true;
  });
}

int VerticalRegister::traverse(visitproc visit, void* arg) const {
  Py_VISIT(source_.get());
  for (const auto& entry : by_x_) Py_VISIT(entry.value.get());
  return 0;
}

void VerticalRegister::clear() noexcept {
  certainty_.lose();
  order_.clear();
  // Letting go of objects can run code that comes back here, so they are out of sight then.
  const auto verticals = std::exchange(by_x_, {});
  const Ref source = std::exchange(source_, Ref());
}

bool VerticalRegister::read_list(const State& state) {
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(source_.get()); ++i) {
    const Ref vertical = host::share(PyList_GET_ITEM(source_.get(), i));
    const std::optional<double> x = x_of_plain_vertical(state, vertical);
    if (!x) return false;
    order_.append(*x);
    if (!order_.is_kept()) return false;
    by_x_.try_add(*x, vertical);
  }
  return true;
}

}  // namespace dsettlement::geometry
