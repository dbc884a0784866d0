#include "geometry/make.hpp"

#include "host/constructor.hpp"
#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

void put(Handle object, Handle name, Handle value) {
  host::check(PyObject_GenericSetAttr(object, name, value));
}

}  // namespace

Ref make_point(const State& state, Handle x, Handle y) {
  if (!state.point.is_as_made()) return host::call(state.point.now(), x, y);
  Ref point = host::allocate(state.point.original());
  put(point, state.names.private_x, x);
  put(point, state.names.private_y, y);
  return point;
}

Ref make_plain_curve(const State& state, Handle p1, Handle p2) {
  Ref curve = host::allocate(state.curve.original());
  put(curve, state.names.private_p1, p1);
  put(curve, state.names.private_p2, p2);
  return curve;
}

Ref make_plain_chain(const State& state, const host::Global& type, Handle curves) {
  Ref chain = host::allocate(type.original());
  state.chain_curves.initialize(chain, curves);
  return chain;
}

}  // namespace dsettlement::geometry
