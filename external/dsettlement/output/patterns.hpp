// The twelve patterns that define the format, as compiled class attributes.
#pragma once

#include <array>

#include "host/class_body.hpp"
#include "output/core/pattern_texts.hpp"

namespace dsettlement::output {

class Patterns {
 public:
  explicit Patterns(host::Module& module);

  // Compiles the patterns and enters them into the class body in their order.
  void define(host::ClassBody& body);

  // The pattern that stands in a class now; a subclass or a test may have put another one there.
  [[nodiscard]] host::Ref of(host::Handle cls, Pattern pattern) const;

  // True if the class has the pattern that was defined; false as well if it has none. Any other
  // failure to look it up is raised.
  [[nodiscard]] bool is_original(host::Handle cls, Pattern pattern) const;

  // True if the class has all the patterns that were defined for a vertical.
  [[nodiscard]] bool are_original_for_vertical(host::Handle cls) const;

 private:
  std::array<host::Name, pattern_count> names_;
  std::array<host::Slot, pattern_count> compiled_;
};

}  // namespace dsettlement::output
