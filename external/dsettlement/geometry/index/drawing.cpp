#include "geometry/index/drawing.hpp"

#include "geometry/index/index.hpp"
#include "geometry/index/plain.hpp"
#include "geometry/make.hpp"
#include "host/containers.hpp"
#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

struct Drawing {
  Ref curves;
  ChainKey key;
};

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

bool run_from_limit_to_limit(const State& state, Handle model,
                             const std::vector<PointKey>& points) {
  const Ref given = host::value_in(host::own_attributes(model), state.names.private_limits);
  const Ref limits = elements_of(given.get());
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

std::optional<Drawing> draw(const State& state, const ChainCache& chains, Handle model,
                            Handle points) {
  const Ref elements = elements_of(points);
  if (!elements) return std::nullopt;
  const std::optional<std::vector<PointKey>> keys = keys_of(state, elements);
  if (!keys || !run_from_limit_to_limit(state, model, *keys) || !ascend(*keys)) {
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

Ref draw_boundary(const State& state, Handle model, Handle points) {
  const auto chains = lease_chains(state, model);
  if (!chains) return {};
  std::optional<Drawing> drawing = draw(state, *chains, model, points);
  if (!drawing) return {};
  if (Ref known = chains->boundary(state, drawing->key)) return known;
  Ref boundary = make_plain_chain(state, state.boundary, std::exchange(drawing->curves, {}));
  if (!chains->add_boundary(state, model, drawing->key, boundary)) return {};
  return boundary;
}

std::pair<Ref, bool> draw_pl_line(const State& state, Handle model, Handle points) {
  const auto chains = lease_chains(state, model);
  if (!chains) return {};
  std::optional<Drawing> drawing = draw(state, *chains, model, points);
  if (!drawing) return {};
  if (Ref known = chains->pl_line(state, drawing->key)) return {std::move(known), true};
  Ref pl_line = make_plain_chain(state, state.pl_line, std::exchange(drawing->curves, {}));
  if (!chains->add_pl_line(state, model, drawing->key, pl_line)) return {};
  return {std::move(pl_line), false};
}

}  // namespace dsettlement::geometry
