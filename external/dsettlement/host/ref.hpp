// Ownership of Python objects: Ref owns, Handle borrows for the length of a call.
#pragma once

#include <Python.h>

#include <utility>

#include "host/error.hpp"

namespace dsettlement::host {

// An owned reference. There are two ways in, and both say what they do with the count.
class Ref {
 public:
  Ref() noexcept = default;

  // Takes over a new reference, as most calls of the C API return it; null means that the call
  // failed and the Python error is set.
  [[nodiscard]] static Ref steal(PyObject* object) {
    if (object == nullptr) throw ErrorSet{};
    return Ref(object);
  }

  // Shares an object that somebody else owns; null gives an empty Ref.
  [[nodiscard]] static Ref borrow(PyObject* object) noexcept {
    Py_XINCREF(object);
    return Ref(object);
  }

  Ref(const Ref& other) noexcept : object_(other.object_) { Py_XINCREF(object_); }
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Ref() { Py_XDECREF(object_); }

  [[nodiscard]] PyObject* get() const noexcept { return object_; }
  [[nodiscard]] PyObject* release() noexcept { return std::exchange(object_, nullptr); }
  explicit operator bool() const noexcept { return object_ != nullptr; }

 private:
  explicit Ref(PyObject* object) noexcept : object_(object) {}

  PyObject* object_ = nullptr;
};

// A parameter type: an object that the caller keeps alive while the call lasts. A Ref converts to
// it and a Handle never outlives the expression it was made in.
class Handle {
 public:
  Handle(PyObject* object) noexcept : object_(object) {}   // NOLINT(google-explicit-constructor)
  Handle(const Ref& ref) noexcept : object_(ref.get()) {}  // NOLINT(google-explicit-constructor)
  operator PyObject*() const noexcept { return object_; }  // NOLINT(google-explicit-constructor)

 private:
  PyObject* object_;
};

[[nodiscard]] inline Ref share(Handle object) noexcept {
  return Ref::borrow(object);
}
[[nodiscard]] inline Ref none() noexcept {
  return Ref::borrow(Py_None);
}
[[nodiscard]] inline Ref boolean(bool value) noexcept {
  return Ref::borrow(value ? Py_True : Py_False);
}

}  // namespace dsettlement::host
