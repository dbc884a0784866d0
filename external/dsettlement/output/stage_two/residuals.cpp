#include "output/stage_two/residuals.hpp"

namespace dsettlement::output {

using host::Handle;
using host::Ref;

namespace {

// The entry under a key, made where there is none yet.
template <typename Make>
Ref entry_of(Handle mapping, Handle key, Make make) {
  PyObject* const found = PyDict_GetItemWithError(mapping, key);
  if (found != nullptr) return Ref::borrow(found);
  if (PyErr_Occurred() != nullptr) throw host::ErrorSet{};
  Ref made = make();
  host::check(PyDict_SetItem(mapping, key, made.get()));
  return made;
}

}  // namespace

std::vector<Ref> residual_lists_of(Handle residuals, Handle vertical,
                                   const std::vector<Ref>& headers) {
  const Ref data = entry_of(residuals, vertical, [] { return Ref::steal(PyDict_New()); });
  std::vector<Ref> lists;
  lists.reserve(headers.size());
  for (const Ref& header : headers) {
    lists.push_back(entry_of(data, header, [] { return Ref::steal(PyList_New(0)); }));
  }
  return lists;
}

}  // namespace dsettlement::output
