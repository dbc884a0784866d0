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

  // The pattern that stands in a class now and has to be run; an empty Ref for the one that was
  // defined, whose matches are found natively. A subclass or a test may have put another one there,
  // and what cannot be read natively is for any pattern to refuse.
  [[nodiscard]] host::Ref to_run(host::Handle cls, Pattern pattern, bool is_readable) const;

 private:
  std::array<host::Name, pattern_count> names_;
  std::array<host::Slot, pattern_count> compiled_;
};

}  // namespace dsettlement::output
