#include "geometry/vertical_register.hpp"

#include "geometry/plain.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

std::optional<double> x_of_plain_vertical(const State& state, Handle vertical) {
  if (!state.model.vertical_as_made.is_class_of(vertical)) return std::nullopt;
  return plain_field(vertical, state.names.private_x);
}

bool VerticalRegister::holds(const State& state, const Ref& verticals) {
  const std::uint64_t changes = state.model.vertical_changes.count;
  const Py_ssize_t size = PyList_GET_SIZE(verticals.get());
  if (is_certain_ && changes == changes_ && verticals.get() == list_.get() &&
      size == order_.size()) {
    return true;
  }
  put_in_order();
  clear();
  if (refusal_.stands(changes, size)) return false;
  if (Py_REFCNT(verticals.get()) != 2) return false;  // the model and the caller
  list_ = verticals;
  changes_ = changes;
  is_certain_ = read(state);
  if (!is_certain_) {
    clear();
    refusal_.remember(changes, size);
  }
  return is_certain_;
}

void VerticalRegister::doubt() {
  put_in_order();
  is_certain_ = false;
}

std::optional<Ref> VerticalRegister::at(const State& state, double x) const {
  const Ref* known = by_x_.find(x);
  if (known == nullptr) return Ref();
  const Ref vertical = *known;
  return x_of_plain_vertical(state, vertical) == x ? std::optional(vertical) : std::nullopt;
}

void VerticalRegister::add(double x, Handle vertical) {
  is_certain_ = false;  // until list and register agree again
  by_x_.try_add(x, host::share(vertical));
  order_.append(x);
  host::check(PyList_Append(list_.get(), vertical));
  is_certain_ = true;
}

int VerticalRegister::traverse(visitproc visit, void* arg) const {
  Py_VISIT(list_.get());
  for (const auto& entry : by_x_) Py_VISIT(entry.value.get());
  return 0;
}

void VerticalRegister::clear() noexcept {
  is_certain_ = false;
  order_.clear();
  // Letting go of objects can run code that comes back here, so they are out of sight then.
  const auto verticals = std::exchange(by_x_, {});
  const Ref list = std::exchange(list_, Ref());
}

bool VerticalRegister::read(const State& state) {
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list_.get()); ++i) {
    const Ref vertical = host::share(PyList_GET_ITEM(list_.get(), i));
    const std::optional<double> x = x_of_plain_vertical(state, vertical);
    if (!x) return false;
    order_.append(*x);
    if (!order_.is_kept()) return false;
    by_x_.try_add(*x, vertical);
  }
  return true;
}

}  // namespace dsettlement::geometry
