#include "host/error.hpp"

#include <exception>
#include <new>

#include "host/object.hpp"
#include "host/ref.hpp"

namespace dsettlement::host {

void translate_current_exception() noexcept {
  try {
    throw;
  } catch (const ErrorSet&) {
    // Python's look-up in a class swallows the error of an allocation: memory ran out, then.
    if (PyErr_Occurred() == nullptr) PyErr_NoMemory();
  } catch (const std::bad_alloc&) {
    PyErr_NoMemory();
  } catch (const std::exception& error) {
    PyErr_SetString(PyExc_SystemError, error.what());
  } catch (...) {
    PyErr_SetString(PyExc_SystemError, "unknown C++ exception");
  }
}

void raise(Handle type, Handle message) {
  PyErr_SetObject(type, message);
  throw ErrorSet{};
}

void raise(Handle type, const char* message) {
  PyErr_SetString(type, message);
  throw ErrorSet{};
}

void raise_made(Handle exception) {
  // What is raised must be an exception, and Python says so where it isn't one.
  if (PyExceptionInstance_Check(exception) == 0) {
    raise(PyExc_TypeError, "exceptions must derive from BaseException");
  }
  PyErr_SetObject(PyExceptionInstance_Class(exception), exception);
  throw ErrorSet{};
}

void raise_again(Ref exception) {
  PyErr_SetRaisedException(exception.release());
  throw ErrorSet{};
}

namespace {

[[noreturn]] void raise_handling(Handle type, Handle message, Handle handled, bool as_cause) {
  const Ref exception = call(type, message);
  // Both setters take over the reference that they are given; setting a cause, none included, also
  // hides the context.
  PyException_SetContext(exception.get(), share(handled).release());
  PyException_SetCause(exception.get(), as_cause ? share(handled).release() : nullptr);
  // Not by way of raising, which would put an exception that the caller is handling in place of the
  // context; that one is the context of `handled` already.
  raise_again(exception);
}

}  // namespace

void raise_from(Handle type, Handle message, Handle handled) {
  raise_handling(type, message, handled, true);
}

void raise_instead_of(Handle type, Handle message, Handle handled) {
  raise_handling(type, message, handled, false);
}

Ref take_error() {
  return Ref::steal(PyErr_GetRaisedException());
}

namespace {

bool can_be_caught(PyObject* type) {
  if (PyTuple_Check(type) == 0) return PyExceptionClass_Check(type);
  for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(type); ++i) {
    if (!PyExceptionClass_Check(PyTuple_GET_ITEM(type, i))) return false;
  }
  return true;
}

}  // namespace

bool is_of_class(Handle exception, Handle type) {
  if (!can_be_caught(type)) {
    raise(PyExc_TypeError,
          "catching classes that do not inherit from BaseException is not allowed");
  }
  return PyErr_GivenExceptionMatches(exception, type) != 0;
}

}  // namespace dsettlement::host
