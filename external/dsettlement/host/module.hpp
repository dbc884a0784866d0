// What all states of the module share: the module object, the machinery to make classes, and the
// register of references that the garbage collector has to see.
#pragma once

#include <Python.h>

#include <utility>
#include <vector>

#include "host/changes.hpp"
#include "host/name.hpp"
#include "host/parameter.hpp"
#include "host/ref.hpp"

namespace dsettlement::host {

class Slot;

class Module {
 public:
  // `module` owns the state that this object is part of, so it is borrowed here.
  explicit Module(Handle module);
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  [[nodiscard]] Handle object() const noexcept { return module_; }
  [[nodiscard]] Handle name() const noexcept { return name_; }
  [[nodiscard]] Handle names() const noexcept { return PyModule_GetDict(module_); }
  [[nodiscard]] Handle function_type() const noexcept { return function_type_; }

  // The object of a default value. Equal defaults share one object, so that a value that was left
  // to its default can be told from one that was given.
  [[nodiscard]] Ref constant(const Default& value);

  [[nodiscard]] Changes& changes() noexcept { return changes_; }

  // Enters an object into the module's namespace.
  void add(Handle name, Handle value) const;

  int traverse(visitproc visit, void* argument) const;

 private:
  friend class Slot;

  PyObject* module_;
  Ref name_;
  Ref function_type_;
  Changes changes_;
  std::vector<Slot*> slots_;
  std::vector<std::pair<Default, Ref>> constants_;
};

// A reference that a state holds for as long as the module lives, seen by the garbage collector.
class Slot {
 public:
  explicit Slot(Module& module) { module.slots_.push_back(this); }
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

  void operator=(Ref object) noexcept { object_ = std::move(object); }
  operator Handle() const noexcept { return object_; }  // NOLINT(google-explicit-constructor)
  [[nodiscard]] PyObject* get() const noexcept { return object_.get(); }

 private:
  Ref object_;
};

// An attribute of another module, taken once.
[[nodiscard]] Ref import(const char* module, const char* name);

}  // namespace dsettlement::host
