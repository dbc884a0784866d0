#include "geometry/verticals.hpp"

#include "geometry/index/index.hpp"
#include "geometry/index/plain.hpp"
#include "host/elements.hpp"
#include "host/text.hpp"
#include "host/unpack.hpp"

namespace dsettlement::geometry {

using host::Arguments;
using host::Handle;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter parameters[] = {host::self, {"x", "float"}};

void check_limits(const State& state, Handle limits, Handle x) {
  const auto [left, right] = host::unpack<2>(limits);
  if (host::compare(x, Py_LT, left)) {
    state.toolkit.refuse(
        R"(Vertical with x-coordinate {} is smaller than left limit of geometry ({}).)", {x, left});
  }
  if (host::compare(x, Py_GT, right)) {
    state.toolkit.refuse(
        R"(Vertical with x-coordinate {} is greater than right limit of geometry ({}).)",
        {x, right});
  }
}

Ref search_vertical(const State& state, Handle verticals, Handle x) {
  for (const Ref& vertical : host::Elements(verticals)) {
    if (host::compare(host::get(vertical, state.names.x), Py_EQ, x)) return vertical;
  }
  return {};
}

// The first vertical at x, or an empty Ref.
Ref find_vertical(const State& state, Handle self, Handle x) {
  if (const std::optional<double> number = plain_number(x)) {
    if (const auto verticals = lease_verticals(state, self)) return verticals->at(state, *number);
  }
  return search_vertical(state, host::get(self, state.names.private_verticals), x);
}

void add_vertical(const State& state, Handle self, Handle vertical) {
  const State::Names& names = state.names;
  if (const auto verticals = lease_verticals(state, self)) {
    if (verticals->add_vertical(state, self, vertical)) return;
  }
  host::call_method(host::get(self, names.private_verticals), names.append, vertical);
  const Ref sort = host::get(host::get(self, names.private_verticals), names.sort);
  static_cast<void>(host::call_with(sort, {}, {{names.key, state.by_x}}));
}

Ref create_vertical(State& state, Arguments arguments) {
  const auto [self, x] = arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;
  check_limits(state, host::get(self, names.private_limits), x);
  if (const Ref known = find_vertical(state, self, x)) return known;
  const Ref vertical = host::call(state.model.vertical.now(), x);
  add_vertical(state, self, vertical);
  return vertical;
}

}  // namespace

void add_verticals(host::ClassBody& body, State& state) {
  body.add(state, host::method<create_vertical>("create_vertical", parameters,
                                                R"(Create vertical based on x-coordinate.

x: x coordinate [m], between the limits of the model, both included.

Returns the vertical; if the model has one at the same x, that one. The verticals are kept in
the order of x.

Raises ModelError if x lies outside the limits; the model then stays as it is.)")
                      .returning("_Vertical"));
}

}  // namespace dsettlement::geometry
