// One fault of each kind that the sanitizers are there to find. A library of its own, which
// scripts/check-nets runs as scripts/sanitize runs the module.

#include <Python.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

// What the compiler must take for unknown, so that it neither warns of the fault nor removes it.
template <typename Value>
Value unknown(Value value) {
  volatile Value hidden = value;
  return hidden;
}

}  // namespace

#define FAULT extern "C" [[gnu::visibility("default"), gnu::noinline]]

FAULT int fault_heap_overflow() {
  int* numbers = new int[4]{};
  const int found = numbers[unknown(4)];
  delete[] numbers;
  return found;
}

FAULT int fault_use_after_free() {
  int* number = unknown(new int(1));
  delete number;
  return *unknown(number);
}

FAULT int fault_double_free() {
  int* number = unknown(new int(1));
  delete number;
  delete unknown(number);
  return 0;
}

FAULT int fault_stack_overflow() {
  int numbers[4] = {1, 2, 3, 4};
  int* first = unknown(&numbers[0]);
  return first[unknown(4)];
}

FAULT int fault_mismatched_free() {
  std::free(unknown(new int(1)));
  return 0;
}

FAULT int fault_use_of_freed_object() {
  // The interpreter's allocator is switched off under the sanitizers, so this is found as any other
  // memory is.
  PyObject* bytes = PyBytes_FromStringAndSize(nullptr, 1000);
  Py_DECREF(bytes);
  return static_cast<int>(unknown(bytes)->ob_refcnt);
}

FAULT int fault_signed_overflow() {
  return unknown(INT_MAX) + unknown(1);
}

FAULT int fault_shift() {
  return unknown(1) << unknown(40);
}

FAULT int fault_misaligned() {
  alignas(8) char bytes[16] = {};
  return *reinterpret_cast<int*>(unknown(&bytes[1]));
}

FAULT int fault_null() {
  return *unknown(static_cast<int*>(nullptr));
}

FAULT int fault_invalid_bool() {
  const char byte = unknown(char{2});
  bool flag = false;
  std::memcpy(unknown(&flag), &byte, 1);
  return unknown(&flag)[0] ? 1 : 0;
}

FAULT int fault_leak() {
  static_cast<void>(unknown(new int[100]));
  return 0;
}

FAULT int fault_leak_of_object() {
  static_cast<void>(unknown(PyBytes_FromStringAndSize(nullptr, 1000)));
  return 0;
}

FAULT int no_fault() {
  PyObject* bytes = PyBytes_FromStringAndSize(nullptr, 1000);
  Py_DECREF(bytes);
  return 0;
}
