// Whether anybody has touched what native code takes for granted.
#pragma once

#include <cstdint>

namespace dsettlement::host {

// Counts what may have changed the objects that are indexed by their values: a field that was set
// (host/counted_fields), a container that was handed out (host/watched_field), a class that was
// changed (host/record_class). What was known at one count is known to hold at the same count.
class Changes {
 public:
  void note() noexcept { ++count_; }
  [[nodiscard]] std::uint64_t count() const noexcept { return count_; }

 private:
  std::uint64_t count_ = 0;
};

}  // namespace dsettlement::host
