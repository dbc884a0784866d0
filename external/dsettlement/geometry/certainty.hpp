// Whether what a register knows can be relied on.
#pragma once

#include <cstdint>

namespace dsettlement::geometry {

// Is lost when somebody may have changed what a register mirrors, and comes back when the register
// has been brought up to date with nobody interfering.
class Certainty {
 public:
  explicit operator bool() const noexcept { return is_certain_; }

  void lose() noexcept {
    is_certain_ = false;
    ++losses_;
  }

  // Does work that makes the register agree, and answers whether it got through. There is no
  // certainty meanwhile, nor after it if it was lost on the way.
  template <typename Work>
  bool regain(Work&& work) {
    is_certain_ = false;
    const std::uint64_t losses = losses_;
    const bool done = work();
    is_certain_ = done && losses == losses_;
    return done;
  }

 private:
  bool is_certain_ = false;
  std::uint64_t losses_ = 0;
};

}  // namespace dsettlement::geometry
