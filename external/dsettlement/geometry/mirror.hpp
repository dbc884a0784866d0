// What the registers of a model have in common.
#pragma once

#include <utility>

#include "geometry/certainty.hpp"
#include "geometry/state.hpp"

namespace dsettlement::geometry {

// A register that mirrors lists of a model. `Register` says how: it can `take` the lists and read
// them, `put_in_order` what it has added to them, and `clear` what it knows.
template <typename Register>
class Mirror {
 public:
  // Puts the lists in order for somebody who may change them.
  void doubt() {
    self().put_in_order();
    certainty_.lose();
  }

  // Lets go of all that is known, with the lists in order.
  void forget() {
    self().put_in_order();
    self().clear();
  }

  // Reads the lists that `look` finds, if any, for a register that has forgotten all before. Does
  // not come to hold as long as something in them is not what the register can mirror, or somebody
  // else holds on to what can change.
  template <typename Look>
  [[nodiscard]] bool read(const State& state, Look&& look) {
    const auto take_found = [&] {
      auto found = look();
      return found && self().take(state, *std::move(found));
    };
    if (!certainty_.regain(take_found)) self().clear();
    return static_cast<bool>(certainty_);
  }

 protected:
  Certainty certainty_;

 private:
  friend Register;
  Mirror() = default;

  Register& self() { return static_cast<Register&>(*this); }
};

}  // namespace dsettlement::geometry
