// What verticals a model has, found without searching.
#pragma once

#include <optional>

#include "geometry/certainty.hpp"
#include "geometry/hashed_list.hpp"
#include "geometry/key.hpp"
#include "geometry/late_order.hpp"
#include "geometry/state.hpp"

namespace dsettlement::geometry {

// Mirrors a model's list of verticals. It holds as long as nobody but this register has had its
// hands on the list or on the objects in it.
class VerticalRegister {
 public:
  // Whether the register holds for this list, if need be after reading it anew. It does not as long
  // as something in it is not plain or out of order, or somebody else holds on to the list.
  [[nodiscard]] bool holds(const State& state, const host::Ref& verticals);

  // Puts the list in order for somebody who is about to look at it.
  void put_in_order() { order_.put(list_.get()); }

  // The same for somebody who may change it.
  void doubt();

  // The first vertical at x, or an empty Ref; nothing if it is not where it was.
  [[nodiscard]] std::optional<host::Ref> at(const State& state, double x) const;

  // Adds a vertical.
  void add(double x, host::Handle vertical);

  int traverse(visitproc visit, void* argument) const;
  void clear() noexcept;

 private:
  [[nodiscard]] bool read(const State& state);

  Certainty certainty_;
  std::uint64_t changes_ = 0;
  host::Ref list_;
  LateOrder order_;
  HashedMap<double, host::Ref, HashOf> by_x_;
};

// The x of a plain vertical; nothing for any other object.
[[nodiscard]] std::optional<double> x_of_plain_vertical(const State& state, host::Handle vertical);

}  // namespace dsettlement::geometry
