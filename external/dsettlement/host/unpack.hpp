// `first, second = pair`, as Python does it.
#pragma once

#include <array>
#include <span>

#include "host/ref.hpp"

namespace dsettlement::host {

// Fills the places with the elements of an iterable that has just as many. Raises TypeError for
// what cannot be iterated and ValueError for another number of elements, in Python's own words.
void unpack_into(Handle iterable, std::span<Ref> places);

template <std::size_t count>
[[nodiscard]] std::array<Ref, count> unpack(Handle iterable) {
  std::array<Ref, count> places;
  unpack_into(iterable, places);
  return places;
}

}  // namespace dsettlement::host
