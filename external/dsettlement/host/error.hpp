// How failures cross between C++ and Python.
#pragma once

#include <Python.h>

namespace dsettlement::host {

class Handle;
class Ref;

// Thrown by C++ code when the Python error is set; carries nothing, since Python holds it all.
struct ErrorSet {};

// Throws ErrorSet if a call of the C API answered with its sign of failure.
inline void check(int result) {
  if (result < 0) throw ErrorSet{};
}

// Sets the Python error from the C++ exception that is being handled.
void translate_current_exception() noexcept;

// The border: runs C++ code on behalf of Python and lets no C++ exception pass.
template <typename Work>
PyObject* guard(Work&& work) noexcept {
  try {
    return work().release();
  } catch (...) {
    translate_current_exception();
    return nullptr;
  }
}

// Sets the Python error of the given class with one message and throws ErrorSet.
[[noreturn]] void raise(Handle type, Handle message);
[[noreturn]] void raise(Handle type, const char* message);

// Raises an exception object that has been made already.
[[noreturn]] void raise_made(Handle exception);

// Raises while `handled` is being handled: as its direct consequence (`raise ... from handled`),
// or in its place, without showing it (`raise ... from None`).
[[noreturn]] void raise_from(Handle type, Handle message, Handle handled);
[[noreturn]] void raise_instead_of(Handle type, Handle message, Handle handled);

// Takes the Python error that is set, for a caller that may handle it. Nothing else may be asked of
// Python before: a lookup can lose an error that is still set.
[[nodiscard]] Ref take_error();

// What an `except` clause asks, and what it does if the answer is no.
[[nodiscard]] bool is_of_class(Handle exception, Handle type);
[[noreturn]] void raise_again(Ref exception);

}  // namespace dsettlement::host
