#include "geometry/index/plain.hpp"

#include <cmath>

#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

std::optional<double> plain_integer(PyObject* number) {
  // Up to here a float holds an integer and the sum of two.
  constexpr long long most = 1LL << 52;
  int overflow = 0;
  const long long value = PyLong_AsLongLongAndOverflow(number, &overflow);
  if (overflow != 0 || value > most || value < -most) return std::nullopt;
  return static_cast<double>(value);
}

}  // namespace

// Elements of arrays are numbers in all but their classes.
std::optional<double> plain_number(Handle coordinate) {
  PyObject* number = coordinate;
  if (PyFloat_CheckExact(number) != 0 ||
      (PyFloat_Check(number) != 0 && host::is_of_fixed_class(number, "numpy.float64"))) {
    // An area of larger ones can overflow: it is no number then, or elements of arrays warn of it.
    constexpr double most = 1e150;
    const double value = PyFloat_AS_DOUBLE(number);
    return std::abs(value) <= most ? std::optional(value) : std::nullopt;
  }
  if (PyLong_CheckExact(number) != 0 || PyBool_Check(number) != 0) return plain_integer(number);
  if (host::is_of_fixed_class(number, "numpy.int64")) {
    return plain_integer(Ref::steal(PyNumber_Index(number)).get());
  }
  return std::nullopt;
}

std::optional<double> plain_field(Handle object, Handle name) {
  const Ref coordinate = host::own_attribute(object, name);
  return coordinate ? plain_number(coordinate) : std::nullopt;
}

std::optional<PointKey> key_of_point(const State& state, Handle point) {
  if (!state.point.is_class_of(point)) return std::nullopt;
  const std::optional<double> x = plain_field(point, state.names.private_x);
  if (!x) return std::nullopt;
  const std::optional<double> y = plain_field(point, state.names.private_y);
  if (!y) return std::nullopt;
  return PointKey{*x, *y};
}

namespace {

// Reads curves one after the other. A curve begins at the point where the one before it ends, so
// that this point need not be read again.
class CurveReader {
 public:
  explicit CurveReader(const State& state) : state_(state) {}

  std::optional<CurveKey> key_of(Handle curve) {
    if (!state_.curve.is_class_of(curve)) return std::nullopt;
    const std::optional<PointKey> p1 = key_of_end(curve, state_.names.private_p1);
    if (!p1) return std::nullopt;
    const std::optional<PointKey> p2 = key_of_end(curve, state_.names.private_p2);
    if (!p2) return std::nullopt;
    return CurveKey{*p1, *p2};
  }

 private:
  std::optional<PointKey> key_of_end(Handle curve, Handle name) {
    Ref point = host::own_attribute(curve, name);
    if (!point) return std::nullopt;
    if (point.get() == last_.get()) return last_key_;
    last_key_ = key_of_point(state_, point);
    last_ = std::move(point);
    return last_key_;
  }

  const State& state_;
  Ref last_;
  std::optional<PointKey> last_key_;
};

}  // namespace

std::optional<CurveKey> key_of_curve(const State& state, Handle curve) {
  return CurveReader(state).key_of(curve);
}

std::optional<ChainKey> key_of_chain(const State& state, Handle chain) {
  const Ref curves = curves_of_plain_chain(state, chain);
  if (!curves) return std::nullopt;
  ChainKey key;
  key.reserve(static_cast<std::size_t>(PyList_GET_SIZE(curves.get())));
  CurveReader reader(state);
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(curves.get()); ++i) {
    const Ref curve = host::share(PyList_GET_ITEM(curves.get(), i));
    const std::optional<CurveKey> curve_key = reader.key_of(curve);
    if (!curve_key) return std::nullopt;
    key.push_back(*curve_key);
  }
  return key;
}

Ref curves_of_plain_chain(const State& state, Handle chain) {
  if (!state.boundary.is_class_of(chain) && !state.pl_line.is_class_of(chain)) return {};
  // An operation can be shadowed by an attribute of the object, so there may be no other.
  const Ref fields = host::own_attributes(chain);
  if (PyDict_GET_SIZE(fields.get()) != 1) return {};
  Ref curves = host::value_in(fields, state.chain_curves.name());
  if (!curves || PyList_CheckExact(curves.get()) == 0) return {};
  return curves;
}

std::optional<double> x_of_vertical(const State& state, Handle vertical) {
  if (!state.model.vertical.is_class_of(vertical)) return std::nullopt;
  return plain_field(vertical, state.names.private_x);
}

double area_of(const ChainKey& chain) {
  double area = 0.0;
  for (const auto& [p1, p2] : chain) {
    area += (p2.x - p1.x) * ((p1.y + p2.y) / 2.0);
  }
  return area;
}

}  // namespace dsettlement::geometry
