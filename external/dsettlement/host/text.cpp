#include "host/text.hpp"

#include "host/object.hpp"

namespace dsettlement::host {

Ref text(std::string_view pattern, std::initializer_list<Handle> values) {
  const Ref pieces = Ref::steal(PyList_New(0));
  const auto append = [&](std::string_view piece) {
    const Ref text = Ref::steal(
        PyUnicode_FromStringAndSize(piece.data(), static_cast<Py_ssize_t>(piece.size())));
    check(PyList_Append(pieces.get(), text.get()));
  };
  for (const Handle value : values) {
    const std::size_t gap = pattern.find("{}");
    append(pattern.substr(0, gap));
    pattern.remove_prefix(gap + 2);
    const Ref shown = Ref::steal(PyObject_Format(value, nullptr));
    check(PyList_Append(pieces.get(), shown.get()));
  }
  append(pattern);
  const Ref nothing = Ref::steal(PyUnicode_New(0, 0));
  return Ref::steal(PyUnicode_Join(nothing.get(), pieces.get()));
}

}  // namespace dsettlement::host
