#include "output/stage_two/headers.hpp"

#include <algorithm>

namespace dsettlement::output {

using host::Handle;
using host::Ref;

void Headers::settle(Handle last_columns) {
  std::vector<std::size_t> by_name;
  PyObject* name = nullptr;
  PyObject* column = nullptr;
  for (Py_ssize_t position = 0; PyDict_Next(last_columns, &position, &name, &column) != 0;) {
    names_.push_back(Ref::borrow(name));
    by_name.push_back(PyLong_AsSize_t(column));
  }
  columns_ = by_name;
  std::ranges::sort(columns_);
  places_.reserve(by_name.size());
  for (const std::size_t last : by_name) {
    const auto place = std::ranges::lower_bound(columns_, last);
    places_.push_back(static_cast<std::size_t>(place - columns_.begin()));
  }
}

Ref Headers::table(std::span<const Ref> lists) const {
  host::Mapping table;
  for (std::size_t i = 0; i < names_.size(); ++i) table.put(names_[i], lists[places_[i]]);
  return table.done();
}

}  // namespace dsettlement::output
