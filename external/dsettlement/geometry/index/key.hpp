// Points and curves as numbers: what their equality comes down to where they are plain.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace dsettlement::geometry {

struct PointKey {
  double x = 0.0;
  double y = 0.0;

  bool operator==(const PointKey&) const = default;
};

struct CurveKey {
  PointKey p1;
  PointKey p2;

  bool operator==(const CurveKey&) const = default;
};

// The curves of a chain, in its order.
using ChainKey = std::vector<CurveKey>;

// Takes in one value after the other, so that equal sequences end in equal hashes.
class Hash {
 public:
  Hash& add(std::uint64_t value) {
    // The finalizer of SplitMix64 (Steele, Lea and Flood, 2014): every bit reaches all others.
    std::uint64_t mixed = state_ ^ (value + 0x9e3779b97f4a7c15U);
    mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
    state_ = mixed ^ (mixed >> 31U);
    return *this;
  }
  // The two zeros are equal, so they are one here.
  Hash& add(double value) { return add(std::bit_cast<std::uint64_t>(value + 0.0)); }
  Hash& add(const PointKey& key) { return add(key.x).add(key.y); }
  Hash& add(const CurveKey& key) { return add(key.p1).add(key.p2); }
  Hash& add(const void* object) { return add(std::bit_cast<std::uintptr_t>(object)); }
  Hash& add(const ChainKey& key) {
    for (const CurveKey& curve : key) add(curve);
    return *this;
  }

  [[nodiscard]] std::uint64_t value() const { return state_; }

 private:
  std::uint64_t state_ = 0;
};

struct HashOf {
  template <typename Key>
  std::uint64_t operator()(const Key& key) const {
    return Hash().add(key).value();
  }
};

}  // namespace dsettlement::geometry
