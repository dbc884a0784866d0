#include "host/parameter.hpp"

#include "host/object.hpp"

namespace dsettlement::host {

Ref Default::object() const {
  switch (kind) {
    case Kind::required:
      return {};
    case Kind::none:
      return host::none();
    case Kind::boolean:
      return host::boolean(number != 0);
    case Kind::integer:
      return host::integer(number);
    case Kind::real:
      return host::real(first);
    case Kind::text:
      return Ref::steal(PyUnicode_FromString(characters));
    case Kind::pair_of_reals:
      return Ref::steal(PyTuple_Pack(2, host::real(first).get(), host::real(second).get()));
  }
  return {};
}

}  // namespace dsettlement::host
