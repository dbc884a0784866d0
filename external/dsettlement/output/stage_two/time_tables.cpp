#include "output/stage_two/time_tables.hpp"

namespace dsettlement::output {

using host::Ref;

Ref TimeTables::done() {
  Ref tables = tables_.done();
  PyObject* time = nullptr;
  PyObject* table = nullptr;
  for (Py_ssize_t position = 0; PyDict_Next(tables.get(), &position, &time, &table) != 0;) {
    if (table != Py_None) continue;
    // The key is there, so that the mapping keeps its shape.
    const std::vector<Ref> lists = Columns(headers_.columns().size(), 0).done();
    host::check(PyDict_SetItem(tables.get(), time, headers_.table(lists).get()));
  }
  return tables;
}

}  // namespace dsettlement::output
