// Lays the arguments of a call out in the order of the parameters.
#pragma once

#include <bitset>
#include <cstdint>
#include <span>
#include <vector>

#include "host/module.hpp"
#include "host/parameter.hpp"

namespace dsettlement::host {

// The parameters of one function object with their names and defaults as Python objects.
class Binding {
 public:
  // The most parameters that an operation may have; a call lays them out on the stack.
  static constexpr std::size_t most_parameters = 128;

  Binding(Module& module, std::span<const Parameter> parameters);

  // True if `count` positional arguments and no keywords need no laying out.
  [[nodiscard]] bool takes_as_given(std::size_t count) const noexcept {
    return count == names_.size() && positional_ == names_.size();
  }

  // Fills `bound`, one place per parameter, from the arguments of a call. `owned` keeps what had to
  // be made for it. Raises TypeError as a Python function named `function` would.
  using Given = std::bitset<most_parameters>;
  struct Owned {
    Ref rest;
    Ref keyword_rest;
  };
  void bind(Handle function, PyObject* const* arguments, std::size_t positional_count,
            PyObject* keyword_names, std::span<PyObject*> bound, Owned& owned) const;

  [[nodiscard]] std::size_t size() const noexcept { return names_.size(); }
  [[nodiscard]] const Ref& name(std::size_t index) const { return names_[index]; }
  [[nodiscard]] const Ref& default_of(std::size_t index) const { return defaults_[index]; }
  [[nodiscard]] std::size_t positional() const noexcept { return positional_; }
  [[nodiscard]] std::size_t keyword_only() const noexcept { return named_ - positional_; }

  // The signature as text, such as "(self, x, *, y=0.0)".
  [[nodiscard]] Ref signature() const;

 private:
  static constexpr std::size_t absent = static_cast<std::size_t>(-1);

  // The place of a parameter that may be given by keyword, or `absent`.
  [[nodiscard]] std::size_t find(PyObject* keyword) const;
  [[nodiscard]] std::size_t find_same(PyObject* keyword) const noexcept;
  void index_names();

  std::vector<Ref> names_;
  std::vector<Ref> defaults_;
  // The defaults once more as a call lays them out, and the places that have none.
  std::vector<PyObject*> layout_;
  std::vector<std::size_t> required_;
  // Places by the address of the name: callers' keywords are mostly the very objects, since the
  // interpreter interns them.
  std::vector<std::uint8_t> places_by_address_;
  // Parameters stand in this order: positional_ of them by position or keyword, then those by
  // keyword only up to named_, then `*rest` and `**keyword_rest` where there are any.
  std::size_t positional_ = 0;
  std::size_t named_ = 0;
  std::size_t rest_ = absent;
  std::size_t keyword_rest_ = absent;
};

}  // namespace dsettlement::host
