// Builders for the containers that documents are made of.
#pragma once

#include <initializer_list>

#include "host/name.hpp"
#include "host/object.hpp"

namespace dsettlement::host {

// A new dict that is filled key by key, in the order of the calls.
class Mapping {
 public:
  Mapping() : dict_(Ref::steal(PyDict_New())) {}

  Mapping& put(Handle key, Handle value) {
    check(PyDict_SetItem(dict_.get(), key, value));
    return *this;
  }
  // Takes over all entries of another mapping, in their order.
  Mapping& update(Handle other) {
    check(PyDict_Update(dict_.get(), other));
    return *this;
  }
  [[nodiscard]] Ref done() { return std::move(dict_); }

 private:
  Ref dict_;
};

class List {
 public:
  List() : list_(Ref::steal(PyList_New(0))) {}

  void append(Handle value) { check(PyList_Append(list_.get(), value)); }
  [[nodiscard]] Ref done() { return std::move(list_); }

 private:
  Ref list_;
};

// A new list with the elements of any iterable, as `list(iterable)` makes it.
[[nodiscard]] inline Ref list_of(Handle iterable) {
  return Ref::steal(PySequence_List(iterable));
}

}  // namespace dsettlement::host
