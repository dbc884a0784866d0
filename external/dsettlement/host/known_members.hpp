// What a class and those derived from it have under some names.
#pragma once

#include <initializer_list>
#include <vector>

#include "host/module.hpp"

namespace dsettlement::host {

// Tells at little cost whether a derived class, or an application's test, has put something of its
// own under a name that native code takes for granted.
class KnownMembers {
 public:
  KnownMembers(Module& module, std::initializer_list<const char*> names);

  // Remembers what a class that has just been made has under the names, be it nothing.
  void remember(Handle type);

  // Whether the class of an object has the same, and no way of its own to attributes.
  [[nodiscard]] bool are_those_of(Handle object) const;

 private:
  std::vector<Name> names_;
  Slot members_;
  // The version of the class that was found to have them last; 0 for none.
  mutable unsigned int seen_version_ = 0;
};

}  // namespace dsettlement::host
