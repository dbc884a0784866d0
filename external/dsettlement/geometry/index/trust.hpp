// Whether the fast path may be taken.
//
// The index of a model answers as a search would as long as nothing of an application runs in that
// search, and nobody has touched what the index was read from. Five questions decide that, and all
// of them are here:
//
//   are_classes_as_made    Do points, curves, chains, layers and verticals behave as this module
//                          made them?
//
//   is_model_as_made       Does the model leave its lists and the operations on them to this
//                          module?
//
//   key_of_...             Is the object plain, so that comparing it is comparing numbers?
//                          (geometry/index/plain)
//
//   stamp_of               Has anybody been noticed since, who may have touched something?
//
//   is_reached_by_...      Could somebody touch it without being noticed? An index is kept beyond
//                          one operation only if not.
#pragma once

#include <cstdint>

#include "geometry/state.hpp"

namespace dsettlement::geometry {

[[nodiscard]] bool are_classes_as_made(const State& state);

[[nodiscard]] bool is_model_as_made(const State& state, host::Handle model);

// What is equal as long as nobody has been noticed.
struct Stamp {
  std::uint64_t changes = 0;       // of points, curves, chains and verticals, and of their classes
  std::uint64_t looks = 0;         // at the lists of the model
  unsigned int class_version = 0;  // of the model; 0 is equal to nothing

  bool operator==(const Stamp& other) const noexcept {
    return class_version != 0 && class_version == other.class_version && changes == other.changes &&
           looks == other.looks;
  }
};

[[nodiscard]] Stamp stamp_of(const State& state, host::Handle model, std::uint64_t looks);

// Whether nobody but the model can reach its attributes, or a list among them that the caller holds
// beside it, without being noticed.
[[nodiscard]] bool is_reached_by_model_alone(host::Handle model);
[[nodiscard]] bool is_reached_by_model_alone(const host::Ref& list);

// Whether nobody but a plain chain can reach its attributes and its list of curves.
[[nodiscard]] bool is_reached_by_chain_alone(const State& state, host::Handle chain);

}  // namespace dsettlement::geometry
