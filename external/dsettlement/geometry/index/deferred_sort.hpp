// Keeps a list sorted for whoever looks at it, without sorting it at each addition.
#pragma once

#include <cstddef>
#include <vector>

#include "host/ref.hpp"

namespace dsettlement::geometry {

// The numbers by which the entries of a list are to be sorted. New entries go to the end of the
// list; it is sorted when somebody is about to look. A stable sort at that time gives what a stable
// sort after each addition would have given.
class DeferredSort {
 public:
  [[nodiscard]] Py_ssize_t size() const { return static_cast<Py_ssize_t>(numbers_.size()); }

  // Takes in the number of the next entry of the list.
  void append(double number);

  // Adds an entry to the list, with its number. If that fails neither is there.
  void add(host::Handle list, host::Handle entry, double number);

  // Adds an entry at its place in a list that is sorted.
  void insert(host::Handle list, host::Handle entry, double number);

  [[nodiscard]] bool is_sorted() const { return sorted_ == numbers_.size(); }

  // Sorts the list; one that has another length than was told is left alone.
  void sort(PyObject* list);

 private:
  void make_room();

  std::vector<double> numbers_;
  std::size_t sorted_ = 0;  // so many entries at the front are in order
};

}  // namespace dsettlement::geometry
