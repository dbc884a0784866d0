#include "geometry/plain.hpp"

#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

// A field of an object whose class has no say in it; nothing if somebody has deleted the field.
Ref field(Handle object, Handle name) {
  PyObject* value = _PyObject_GenericGetAttrWithDict(object, name, nullptr, 1);
  if (value != nullptr) return Ref::steal(value);
  if (PyErr_Occurred() != nullptr) throw host::ErrorSet{};
  return {};
}

std::optional<PointKey> key_of_end(const State& state, Handle curve, Handle name) {
  const Ref point = field(curve, name);
  return point ? key_of_point(state, point) : std::nullopt;
}

}  // namespace

std::optional<double> plain_number(Handle coordinate) {
  PyObject* number = coordinate;
  if (PyFloat_CheckExact(number) != 0) return PyFloat_AS_DOUBLE(number);
  if (PyLong_CheckExact(number) == 0 && PyBool_Check(number) == 0) return std::nullopt;
  constexpr long long most_exact = 1LL << 53;  // from here on a float leaves integers out
  int overflow = 0;
  const long long value = PyLong_AsLongLongAndOverflow(number, &overflow);
  if (overflow != 0 || value > most_exact || value < -most_exact) return std::nullopt;
  return static_cast<double>(value);
}

std::optional<double> plain_field(Handle object, Handle name) {
  const Ref coordinate = field(object, name);
  return coordinate ? plain_number(coordinate) : std::nullopt;
}

bool are_classes_as_made(const State& state) {
  const State::Made& made = state.made;
  return made.point.holds() && made.curve.holds() && made.curve_list.holds() &&
         made.pl_line.holds() && made.boundary.holds();
}

std::optional<PointKey> key_of_point(const State& state, Handle point) {
  if (!state.made.point.is_class_of(point)) return std::nullopt;
  const std::optional<double> x = plain_field(point, state.names.private_x);
  if (!x) return std::nullopt;
  const std::optional<double> y = plain_field(point, state.names.private_y);
  if (!y) return std::nullopt;
  return PointKey{*x, *y};
}

std::optional<CurveKey> key_of_curve(const State& state, Handle curve) {
  if (!state.made.curve.is_class_of(curve)) return std::nullopt;
  const std::optional<PointKey> p1 = key_of_end(state, curve, state.names.private_p1);
  if (!p1) return std::nullopt;
  const std::optional<PointKey> p2 = key_of_end(state, curve, state.names.private_p2);
  if (!p2) return std::nullopt;
  return CurveKey{*p1, *p2};
}

PyObject* curves_of_plain_chain(const State& state, Handle chain) {
  if (!state.made.boundary.is_class_of(chain) && !state.made.pl_line.is_class_of(chain)) {
    return nullptr;
  }
  // An operation can be shadowed by an attribute of the object, so there may be no other.
  const Ref fields = Ref::steal(PyObject_GenericGetDict(chain, nullptr));
  if (PyDict_GET_SIZE(fields.get()) != 1) return nullptr;
  PyObject* curves = state.chain_curves.peek(chain);
  return curves != nullptr && PyList_CheckExact(curves) != 0 ? curves : nullptr;
}

}  // namespace dsettlement::geometry
