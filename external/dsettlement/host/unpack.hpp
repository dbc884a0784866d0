// `first, second = pair`, as Python does it.
#pragma once

#include "host/ref.hpp"

namespace dsettlement::host {

struct Pair {
  Ref first;
  Ref second;
};

// The two elements of any iterable of exactly two. Raises TypeError for what cannot be iterated and
// ValueError for another number of elements, in Python's own words.
[[nodiscard]] Pair unpack_two(Handle iterable);

}  // namespace dsettlement::host
