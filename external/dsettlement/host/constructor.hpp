// Making many objects of a class whose constructor is native.
#pragma once

#include "host/module.hpp"
#include "host/name.hpp"

namespace dsettlement::host {

// Knows the constructor that a class was made with. As long as the class still has it, an object
// can be made by running the constructor's work directly, without a call and without laying out
// arguments; once an application has replaced it, objects are made by calling the class.
class Constructor {
 public:
  explicit Constructor(Module& module) : original_(module) {}

  // Remembers the constructor of a class that has just been made.
  void remember(Handle type);

  [[nodiscard]] bool is_still_that_of(Handle type) const;

 private:
  Name init_{"__init__"};
  Slot original_;
};

// A new object of a class, as object.__new__ makes it.
[[nodiscard]] Ref allocate(Handle type);

}  // namespace dsettlement::host
