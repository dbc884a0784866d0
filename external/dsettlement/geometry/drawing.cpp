#include "geometry/drawing.hpp"

#include "geometry/make.hpp"
#include "geometry/register.hpp"
#include "host/containers.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

struct Drawing {
  Ref curves;
  ChainKey key;
};

// Whether calling the operation through the model runs what this module has put into its class.
bool runs_own(Handle model, Handle fields, Handle name, Handle operation) {
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  return _PyType_Lookup(type, name) == static_cast<PyObject*>(operation) &&
         !host::contains(fields, name);
}

bool is_open(const State& state, Handle model, Handle fields) {
  const State::Names& names = state.names;
  return runs_own(model, fields, names.create_curves, state.create_curves) &&
         runs_own(model, fields, names.create_curve, state.create_curve) &&
         is_as_made(state.curve, state.made.curve);
}

// The elements of a list or a tuple as they are now; empty for any other object.
Ref elements_of(PyObject* sequence) {
  if (sequence == nullptr) return {};
  if (PyList_CheckExact(sequence) == 0 && PyTuple_CheckExact(sequence) == 0) return {};
  return Ref::steal(PySequence_Tuple(sequence));
}

std::optional<std::vector<PointKey>> keys_of(const State& state, Handle points) {
  const Py_ssize_t count = PyTuple_GET_SIZE(static_cast<PyObject*>(points));
  std::vector<PointKey> keys;
  keys.reserve(static_cast<std::size_t>(count));
  for (Py_ssize_t i = 0; i < count; ++i) {
    const std::optional<PointKey> key =
        key_of_point(state, PyTuple_GET_ITEM(static_cast<PyObject*>(points), i));
    if (!key) return std::nullopt;
    keys.push_back(*key);
  }
  return keys;
}

bool run_from_limit_to_limit(const State& state, Handle model, Handle fields,
                             const std::vector<PointKey>& points) {
  const Handle name = state.names.limits;
  PyTypeObject* type = Py_TYPE(static_cast<PyObject*>(model));
  if (_PyType_Lookup(type, name) != nullptr) return false;
  PyObject* given = PyDict_GetItemWithError(fields, name);
  if (given == nullptr && PyErr_Occurred() != nullptr) throw host::ErrorSet{};
  const Ref limits = elements_of(given);
  if (!limits || PyTuple_GET_SIZE(limits.get()) < 2 || points.empty()) return false;
  return plain_number(PyTuple_GET_ITEM(limits.get(), 0)) == points.front().x &&
         plain_number(PyTuple_GET_ITEM(limits.get(), 1)) == points.back().x;
}

// From left to right, so that each curve begins where the one before it ends, and without a repeat.
bool ascend(const std::vector<PointKey>& points) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (points[i].x < points[i - 1].x || points[i] == points[i - 1]) return false;
  }
  return true;
}

std::optional<Drawing> draw(State& state, const ChainRegister& chains, Handle model,
                            Handle points) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(model, nullptr));
  if (!is_open(state, model, fields)) return std::nullopt;
  const Ref elements = elements_of(points);
  if (!elements) return std::nullopt;
  const std::optional<std::vector<PointKey>> keys = keys_of(state, elements);
  if (!keys || !run_from_limit_to_limit(state, model, fields, *keys) || !ascend(*keys)) {
    return std::nullopt;
  }
  host::List curves;
  ChainKey chain;
  chain.reserve(keys->size());
  for (std::size_t i = 1; i < keys->size(); ++i) {
    chain.push_back({(*keys)[i - 1], (*keys)[i]});
    Ref curve = chains.curve(state, chain.back());
    if (!curve) {
      const auto place = static_cast<Py_ssize_t>(i);
      curve = make_plain_curve(state, PyTuple_GET_ITEM(elements.get(), place - 1),
                               PyTuple_GET_ITEM(elements.get(), place));
    }
    curves.append(curve);
  }
  return Drawing{curves.done(), std::move(chain)};
}

}  // namespace

Ref draw_boundary(State& state, Handle model, Handle points) {
  const InUse<ChainRegister> chains = chain_register(state, model);
  if (!chains || !is_as_made(state.boundary, state.made.boundary)) return {};
  std::optional<Drawing> drawing = draw(state, *chains, model, points);
  if (!drawing) return {};
  Ref boundary = make_plain_chain(state, state.boundary, std::exchange(drawing->curves, {}));
  if (Ref known = chains->boundary(drawing->key, boundary)) return known;
  if (!chains->add_boundary(state, drawing->key, boundary)) return {};
  return boundary;
}

std::pair<Ref, bool> draw_pl_line(State& state, Handle model, Handle points) {
  const InUse<ChainRegister> chains = chain_register(state, model);
  if (!chains || !is_as_made(state.pl_line, state.made.pl_line)) return {};
  std::optional<Drawing> drawing = draw(state, *chains, model, points);
  if (!drawing) return {};
  Ref pl_line = make_plain_chain(state, state.pl_line, std::exchange(drawing->curves, {}));
  if (Ref known = chains->pl_line(drawing->key, pl_line)) return {std::move(known), true};
  if (!chains->add_pl_line(state, drawing->key, pl_line)) return {};
  return {std::move(pl_line), false};
}

}  // namespace dsettlement::geometry
