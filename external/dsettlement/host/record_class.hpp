// A class of records, and telling at little cost whether it still is as it was made.
#pragma once

#include "host/global.hpp"

namespace dsettlement::host {

// An application's tests may put other operations into a class, or another class into its place;
// what native code takes for granted about its objects holds as long as nobody has.
class RecordClass : public Global {
 public:
  RecordClass(Module& module, const char* name);

  // Enters a class that has just been made, and remembers what it looks like.
  void operator=(Ref type);

  // Whether the class has the members that matter and the bases that it was made with. That it has
  // been changed and changed back counts as a change of its objects: meanwhile they may have been
  // written to without that.
  [[nodiscard]] bool is_unchanged() const;

  // Whether the name still stands for the class too, so that it is the one that is asked for.
  [[nodiscard]] bool is_as_made() const { return is_original() && is_unchanged(); }

  // Whether the object is of this very class, and of no class derived from it.
  [[nodiscard]] bool is_class_of(Handle object) const noexcept {
    return reinterpret_cast<PyObject*>(Py_TYPE(static_cast<PyObject*>(object))) == original_.get();
  }

  // Sets a field in the constructor of the class: as any attribute, but the first value of an
  // object is no change.
  void initialize(Handle object, Handle name, Handle value) const;

 private:
  [[nodiscard]] bool has_same_members() const;

  Slot members_;
  Slot bases_;
  // The version of the class that was found unchanged last; 0 for none.
  mutable unsigned int seen_version_ = 0;
};

}  // namespace dsettlement::host
