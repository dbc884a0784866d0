// Arithmetic of whatever has it: the operands' own, so that no type of number is left out.
#pragma once

#include "host/ref.hpp"

namespace dsettlement::host {

[[nodiscard]] inline Ref sum(Handle left, Handle right) {
  return Ref::steal(PyNumber_Add(left, right));
}
[[nodiscard]] inline Ref difference(Handle left, Handle right) {
  return Ref::steal(PyNumber_Subtract(left, right));
}
[[nodiscard]] inline Ref product(Handle left, Handle right) {
  return Ref::steal(PyNumber_Multiply(left, right));
}
[[nodiscard]] inline Ref quotient(Handle left, Handle right) {
  return Ref::steal(PyNumber_TrueDivide(left, right));
}

}  // namespace dsettlement::host
