// What verticals a model has, found without searching.
#pragma once

#include <optional>
#include <vector>

#include "geometry/state.hpp"

namespace dsettlement::geometry {

// Mirrors a model's list of verticals. It holds as long as nobody but this register has had its
// hands on the list or on the objects in it.
class VerticalRegister {
 public:
  // Whether the register holds for this list, if need be after reading it anew. It does not as long
  // as something in it is not plain or out of order, or somebody else holds on to the list.
  [[nodiscard]] bool holds(const State& state, PyObject* verticals);

  void doubt() noexcept { is_certain_ = false; }

  // The vertical at x, borrowed, or null.
  [[nodiscard]] PyObject* at(double x) const;

  // Adds a vertical at its place.
  void add(double x, host::Handle vertical);

 private:
  [[nodiscard]] bool read(const State& state, PyObject* verticals);

  bool is_certain_ = false;
  std::uint64_t changes_ = 0;
  PyObject* verticals_ = nullptr;
  std::vector<double> x_;  // of the verticals, ascending
};

// The x of a plain vertical; nothing for any other object.
[[nodiscard]] std::optional<double> x_of_plain_vertical(const State& state, host::Handle vertical);

}  // namespace dsettlement::geometry
