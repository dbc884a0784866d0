// What verticals a model has, found without searching.
#pragma once

#include <optional>

#include "geometry/hashed_list.hpp"
#include "geometry/key.hpp"
#include "geometry/late_order.hpp"
#include "geometry/mirror.hpp"
#include "geometry/state.hpp"

namespace dsettlement::geometry {

// Mirrors a model's list of verticals. It holds as long as nobody but this register has had its
// hands on the list or on the objects in it.
class VerticalRegister : public Mirror<VerticalRegister> {
 public:
  using Source = host::Ref;

  // Whether the register holds for this list.
  [[nodiscard]] bool mirrors(const State& state, const Source& source) const;

  // The first vertical at x, or an empty Ref; nothing if it is not where it was.
  [[nodiscard]] std::optional<host::Ref> at(const State& state, double x) const;

  // Adds a vertical. The answer is no, and nothing has happened, if the register does not hold any
  // more.
  [[nodiscard]] bool add(double x, host::Handle vertical);

  int traverse(visitproc visit, void* argument) const;
  void clear() noexcept;

 private:
  friend Mirror;
  void put_in_order() { order_.put(source_.get()); }
  [[nodiscard]] bool take(const State& state, Source source);
  [[nodiscard]] bool read_list(const State& state);

  std::uint64_t changes_ = 0;
  Source source_;
  LateOrder order_;
  HashedMap<double, host::Ref, HashOf> by_x_;
};

// The x of a plain vertical; nothing for any other object.
[[nodiscard]] std::optional<double> x_of_plain_vertical(const State& state, host::Handle vertical);

}  // namespace dsettlement::geometry
