// Attribute names and dictionary keys, interned once per module.
#pragma once

#include <Python.h>

#include "host/ref.hpp"

namespace dsettlement::host {

class Name {
 public:
  explicit Name(const char* text) : text_(Ref::steal(PyUnicode_InternFromString(text))) {}

  operator Handle() const noexcept { return text_; }  // NOLINT(google-explicit-constructor)
  [[nodiscard]] PyObject* get() const noexcept { return text_.get(); }

 private:
  Ref text_;
};

}  // namespace dsettlement::host
