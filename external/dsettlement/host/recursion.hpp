// The interpreter's limit on the depth of calls.
#pragma once

#include <Python.h>

namespace dsettlement::host {

// One level of depth, for as long as it lives; false, with RecursionError set, if there is none
// left.
class Recursion {
 public:
  Recursion() noexcept : entered_(Py_EnterRecursiveCall(" while calling a Python object") == 0) {}
  Recursion(const Recursion&) = delete;
  Recursion& operator=(const Recursion&) = delete;
  ~Recursion() {
    if (entered_) Py_LeaveRecursiveCall();
  }

  explicit operator bool() const noexcept { return entered_; }

 private:
  bool entered_;
};

}  // namespace dsettlement::host
