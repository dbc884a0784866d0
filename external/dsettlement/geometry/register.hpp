// The registers of a two-dimensional model: an index of what is in its lists, for as long as that
// is known.
#pragma once

#include <utility>

#include "geometry/chain_register.hpp"
#include "geometry/vertical_register.hpp"
#include "host/class_body.hpp"

namespace dsettlement::geometry {

// A register that somebody works with. It stays where it is for that time, and nobody else gets it:
// what is asked for in the middle of that is searched for.
template <typename Register>
class InUse {
 public:
  InUse() = default;
  InUse(host::Ref owner, Register& used, bool& is_busy)
      : owner_(std::move(owner)), register_(&used), is_busy_(&is_busy) {
    is_busy = true;
  }
  InUse(InUse&& other) noexcept
      : owner_(std::move(other.owner_)),
        register_(std::exchange(other.register_, nullptr)),
        is_busy_(std::exchange(other.is_busy_, nullptr)) {}
  InUse& operator=(InUse&&) = delete;
  ~InUse() {
    if (is_busy_ != nullptr) *is_busy_ = false;
  }

  explicit operator bool() const noexcept { return register_ != nullptr; }
  Register* operator->() const noexcept { return register_; }
  Register& operator*() const noexcept { return *register_; }

 private:
  host::Ref owner_;
  Register* register_ = nullptr;
  bool* is_busy_ = nullptr;
};

// The registers of a model, or nothing if the model must be searched: because something in it is
// not plain, because its class goes other ways, or because somebody else holds on to its lists.
[[nodiscard]] InUse<ChainRegister> chain_register(State& state, host::Handle model);
[[nodiscard]] InUse<VerticalRegister> vertical_register(State& state, host::Handle model);

// Puts the boundaries of a model in order for an operation that is about to look at them past the
// attribute; the attribute does so by itself.
void put_boundaries_in_order(State& state, host::Handle model);

// Adds to the class of models what the registers need: a place for them and watched lists.
void add_registers(host::Module& module, State& state, host::ClassBody& body);

// To be called with the finished class.
void remember_for_registers(State& state, host::Handle model_class);

}  // namespace dsettlement::geometry
