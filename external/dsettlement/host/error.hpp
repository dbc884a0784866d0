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

// Takes the Python error that is set if it is of the given class, for a caller that handles it;
// otherwise throws on.
[[nodiscard]] Ref caught(Handle type);

}  // namespace dsettlement::host
