// Telling at little cost whether a class still is as it was made.
#pragma once

#include "host/module.hpp"

namespace dsettlement::host {

struct Changes;

// What a class looked like when it was made. An application's tests may put other operations into
// a class; what native code takes for granted about its objects holds as long as nobody has.
class ClassSnapshot {
 public:
  // That a class has been changed and changed back counts as a change of its objects: meanwhile
  // they may have been written to without that.
  ClassSnapshot(Module& module, Changes& changes)
      : type_(module), members_(module), bases_(module), changes_(changes) {}

  // Remembers a class that has just been made.
  void take(Handle type);

  // Whether the class has the members that matter and the bases that it was made with.
  [[nodiscard]] bool holds() const;

  // Whether the object is of this very class, and of no class derived from it.
  [[nodiscard]] bool is_class_of(Handle object) const noexcept {
    return reinterpret_cast<PyObject*>(Py_TYPE(static_cast<PyObject*>(object))) == type_.get();
  }

 private:
  [[nodiscard]] bool is_unchanged() const;

  Slot type_;
  Slot members_;
  Slot bases_;
  Changes& changes_;
  // The interpreter gives a class another version with every change; 0 stands for none.
  mutable unsigned int seen_version_ = 0;
};

}  // namespace dsettlement::host
