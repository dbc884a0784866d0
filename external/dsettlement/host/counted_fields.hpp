// Records whose changes are counted.
#pragma once

#include <initializer_list>
#include <vector>

#include "host/class_body.hpp"

namespace dsettlement::host {

// Records offer no way to change, but Python lets anybody write to any attribute. Which attributes
// of a class are counted: these, with those by which an object changes as a whole, or any at all if
// none are named.
class CountedFields {
 public:
  CountedFields(Module& module, std::initializer_list<const char*> names);

  // Gives a class the operations by which its attributes are set and deleted.
  void add_to(ClassBody& body);

  void note(Handle name);

 private:
  Changes& changes_;
  std::vector<Name> names_;
};

}  // namespace dsettlement::host
