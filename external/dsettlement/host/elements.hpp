// The elements of whatever has them, for a `for` statement that takes them as one of Python's
// would.
#pragma once

#include <iterator>

#include "host/name.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

class Elements {
 public:
  explicit Elements(Handle iterable) : iterator_(Ref::steal(PyObject_GetIter(iterable))) {}

  class Iterator {
   public:
    explicit Iterator(Handle iterator) : iterator_(iterator) { advance(); }

    const Ref& operator*() const noexcept { return element_; }
    Iterator& operator++() {
      element_ = Ref();  // nobody but Python holds on to an element when it makes the next
      advance();
      return *this;
    }
    bool operator==(std::default_sentinel_t /*end*/) const noexcept { return !element_; }

   private:
    void advance() {
      PyObject* next = PyIter_Next(iterator_);
      if (next != nullptr) {
        element_ = Ref::steal(next);
      } else if (PyErr_Occurred() != nullptr) {
        throw ErrorSet{};
      }
    }

    Handle iterator_;
    Ref element_;
  };

  [[nodiscard]] Iterator begin() const { return Iterator(iterator_); }
  [[nodiscard]] static std::default_sentinel_t end() noexcept { return {}; }

 private:
  Ref iterator_;
};

// The pairs of key and value of a mapping, in its order. Like Python's own loop it refuses a
// mapping that changes its size on the way.
[[nodiscard]] inline Elements items_of(Handle mapping) {
  return Elements(call_method(mapping, Name("items")));
}

}  // namespace dsettlement::host
