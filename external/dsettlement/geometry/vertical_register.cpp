#include "geometry/vertical_register.hpp"

#include <algorithm>
#include <cmath>

#include "geometry/plain.hpp"

namespace dsettlement::geometry {

using host::Handle;

std::optional<double> x_of_plain_vertical(const State& state, Handle vertical) {
  if (!state.model.vertical_as_made.is_class_of(vertical)) return std::nullopt;
  const std::optional<double> x = plain_field(vertical, state.names.private_x);
  return x && !std::isnan(*x) ? x : std::nullopt;
}

bool VerticalRegister::holds(const State& state, PyObject* verticals) {
  const auto count = static_cast<Py_ssize_t>(x_.size());
  const std::uint64_t changes = state.model.vertical_changes.count;
  if (is_certain_ && changes == changes_ && verticals == verticals_ &&
      PyList_GET_SIZE(verticals) == count) {
    return true;
  }
  x_.clear();
  is_certain_ = read(state, verticals);
  changes_ = changes;
  verticals_ = verticals;
  return is_certain_;
}

PyObject* VerticalRegister::at(double x) const {
  const auto place = std::ranges::lower_bound(x_, x);
  if (place == x_.end() || *place != x) return nullptr;
  return PyList_GET_ITEM(verticals_, place - x_.begin());
}

void VerticalRegister::add(double x, Handle vertical) {
  is_certain_ = false;  // until list and register agree again
  const auto place = std::ranges::upper_bound(x_, x);
  const auto position = place - x_.begin();
  x_.insert(place, x);
  host::check(PyList_Insert(verticals_, position, vertical));
  is_certain_ = true;
}

bool VerticalRegister::read(const State& state, PyObject* verticals) {
  if (Py_REFCNT(verticals) != 1) return false;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(verticals); ++i) {
    const std::optional<double> x = x_of_plain_vertical(state, PyList_GET_ITEM(verticals, i));
    if (!x || (!x_.empty() && *x < x_.back())) return false;
    x_.push_back(*x);
  }
  return true;
}

}  // namespace dsettlement::geometry
