// The floor under any reader of result files: one bare pass over a text of one-byte characters that
// turns every field that is a number into a Python float and puts it into a list. It knows no
// blocks, no columns and no headers.
//
// `exactly` does short decimals by hand, as the reader of the module does; `generally` gives every
// field to the general conversion.

#include <Python.h>

#include <charconv>
#include <cstdint>

namespace {

constexpr double powers_of_ten[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                    1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

bool is_space(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}
bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// Python ends every text with a null character, which ends each of the loops.
bool read_short_decimal(const char*& place, double& value) {
  const char* p = place;
  const bool is_negative = *p == '-';
  if (is_negative) ++p;
  std::int64_t digits = 0;
  const char* const whole = p;
  for (; is_digit(*p); ++p) digits = digits * 10 + (*p - '0');
  std::ptrdiff_t count = p - whole;
  std::ptrdiff_t decimals = 0;
  if (*p == '.') {
    const char* const fraction = ++p;
    for (; is_digit(*p) && p - fraction < 16; ++p) digits = digits * 10 + (*p - '0');
    decimals = p - fraction;
    count += decimals;
  }
  if (count == 0 || count > 15 || (!is_space(*p) && *p != '\0')) return false;
  value = static_cast<double>(digits) / powers_of_ten[decimals];
  if (is_negative) value = -value;
  place = p;
  return true;
}

template <bool by_hand>
PyObject* pass(PyObject* text) {
  Py_ssize_t size = 0;
  const char* place = PyUnicode_AsUTF8AndSize(text, &size);
  if (place == nullptr) return nullptr;
  const char* const end = place + size;
  PyObject* const list = PyList_New(0);
  if (list == nullptr) return nullptr;
  while (true) {
    while (is_space(*place)) ++place;
    if (place == end) return list;
    double value = 0.0;
    bool is_number = by_hand && read_short_decimal(place, value);
    if (!is_number) {
      const char* behind = place;
      while (behind != end && !is_space(*behind)) ++behind;
      const auto result = std::from_chars(place, behind, value);
      is_number = result.ec == std::errc() && result.ptr == behind;
      place = behind;
    }
    if (!is_number) continue;
    PyObject* const number = PyFloat_FromDouble(value);
    if (number == nullptr || PyList_Append(list, number) < 0) {
      Py_XDECREF(number);
      Py_DECREF(list);
      return nullptr;
    }
    Py_DECREF(number);
  }
}

}  // namespace

extern "C" PyObject* exactly(PyObject* text) {
  return pass<true>(text);
}
extern "C" PyObject* generally(PyObject* text) {
  return pass<false>(text);
}
