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

// Calls go_on(Ref element) for each element, as a `for` statement would take them, until it answers
// false.
template <typename GoOn>
void for_each_while(Handle iterable, GoOn&& go_on) {
  const Ref iterator = Ref::steal(PyObject_GetIter(iterable));
  while (PyObject* next = PyIter_Next(iterator.get())) {
    if (!go_on(Ref::steal(next))) return;
  }
  if (PyErr_Occurred() != nullptr) throw ErrorSet{};
}

template <typename Visit>
void for_each(Handle iterable, Visit&& visit) {
  for_each_while(iterable, [&](const Ref& element) {
    visit(element);
    return true;
  });
}

// Calls visit(Handle key, Handle value) for each entry of a mapping, in its order.
template <typename Visit>
void for_each_item(Handle mapping, Visit&& visit) {
  // The view and not a list of the entries: like Python's own loop it refuses a mapping that
  // changes its size on the way.
  for_each(call_method(mapping, Name("items")),
           [&](const Ref& entry) { visit(item(entry, 0), item(entry, 1)); });
}

// A new list with the elements of any iterable, as `list(iterable)` makes it.
[[nodiscard]] inline Ref list_of(Handle iterable) {
  return Ref::steal(PySequence_List(iterable));
}

}  // namespace dsettlement::host
