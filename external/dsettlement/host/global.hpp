// Names of the module's namespace that are looked up when they are used, so that an application's
// tests can put something else in their place.
#pragma once

#include "host/module.hpp"
#include "host/name.hpp"

namespace dsettlement::host {

// A class of this module. A replacement in the module's namespace wins.
class Global {
 public:
  Global(Module& module, const char* name) : module_(module), name_(name), original_(module) {}

  // Enters the object into the module's namespace under this name.
  void operator=(Ref object);

  [[nodiscard]] Handle name() const noexcept { return name_; }

  // What stands under the name now; NameError if nothing does.
  [[nodiscard]] Ref now() const;

  // Whether what was entered still stands under the name.
  [[nodiscard]] bool is_original() const;

  // What was entered, whatever stands there now: for deriving and raising.
  [[nodiscard]] Handle original() const noexcept { return original_; }

 protected:
  Module& module_;
  Name name_;
  Slot original_;
};

// Something from another module. A replacement in this module's namespace wins, then one in the
// other module's.
class Imported : public Global {
 public:
  Imported(Module& module, const char* source, const char* name);

  [[nodiscard]] Ref now() const;

 private:
  Slot source_;
};

}  // namespace dsettlement::host
