#include "geometry/chain_register.hpp"

#include <algorithm>
#include <cmath>

#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

// Whether only its one owner can reach a container.
bool has_one_owner(PyObject* container) {
  return Py_REFCNT(container) == 1;
}

// The same for the dictionary with an object's attributes.
bool has_dictionary_alone(Handle object) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(object, nullptr));
  return Py_REFCNT(fields.get()) == 2;  // the object and this function
}

// Whether nobody but the chain can reach its curves.
bool keeps_its_curves(const State& state, Handle chain) {
  return has_dictionary_alone(chain) && has_one_owner(curves_of_plain_chain(state, chain));
}

// The area of a plain boundary, which may be no number.
double area_of(const State& state, Handle boundary) {
  const Ref area = host::call_method(boundary, state.names.area_above_horizontal);
  return PyFloat_CheckExact(area.get()) != 0 ? PyFloat_AS_DOUBLE(area.get()) : std::nan("");
}

}  // namespace

bool ChainRegister::holds(const State& state, Lists lists) {
  if (is_seen(state, lists)) return true;
  clear();
  if (!read(state, lists)) {
    clear();
    return false;
  }
  lists_ = lists;
  pl_line_count_ = PyList_GET_SIZE(lists.pl_lines);
  changes_ = state.changes.count;
  is_certain_ = true;
  return true;
}

PyObject* ChainRegister::curve(const CurveKey& key) const {
  const auto found = curves_.find(key);
  return found == curves_.end() ? nullptr : found->second.get();
}

PyObject* ChainRegister::boundary(std::size_t hash, Handle boundary) const {
  const ChainIndex::Entry* entry = boundaries_.find(hash, boundary);
  return entry == nullptr ? nullptr : entry->chain.get();
}

PyObject* ChainRegister::pl_line(std::size_t hash, Handle pl_line) const {
  const ChainIndex::Entry* entry = pl_lines_.find(hash, pl_line);
  return entry == nullptr ? nullptr : entry->chain.get();
}

bool ChainRegister::add_boundary(const State& state, std::size_t hash, Handle boundary) {
  const double area = area_of(state, boundary);
  if (std::isnan(area) || !keeps_its_curves(state, boundary)) return false;
  is_certain_ = false;  // until list and register agree again
  // Where a stable sort puts the last of a list that was sorted before.
  const auto place = std::upper_bound(areas_.begin(), areas_.end(), area);
  const auto position = place - areas_.begin();
  areas_.insert(place, area);
  host::check(PyList_Insert(lists_.boundaries, position, boundary));
  boundaries_.enter(hash, boundary, position);
  enter_curves(state, boundary);
  is_certain_ = true;
  return true;
}

bool ChainRegister::add_pl_line(const State& state, std::size_t hash, Handle pl_line) {
  if (!keeps_its_curves(state, pl_line)) return false;
  is_certain_ = false;  // until list and register agree again
  host::check(PyList_Append(lists_.pl_lines, pl_line));
  pl_lines_.enter(hash, pl_line, PyList_GET_SIZE(lists_.pl_lines) - 1);
  enter_curves(state, pl_line);
  ++pl_line_count_;
  is_certain_ = true;
  return true;
}

int ChainRegister::traverse(visitproc visit, void* arg) const {
  for (const auto& [key, curve] : curves_) Py_VISIT(curve.get());
  if (const int stop = boundaries_.traverse(visit, arg); stop != 0) return stop;
  return pl_lines_.traverse(visit, arg);
}

void ChainRegister::clear() noexcept {
  is_certain_ = false;
  areas_.clear();
  // Letting go of an object can run code that comes back here, so what is let go is out of sight.
  const auto curves = std::exchange(curves_, {});
  const auto boundaries = std::exchange(boundaries_, {});
  const auto pl_lines = std::exchange(pl_lines_, {});
}

bool ChainRegister::is_seen(const State& state, Lists lists) const {
  return is_certain_ && changes_ == state.changes.count && lists.boundaries == lists_.boundaries &&
         lists.pl_lines == lists_.pl_lines &&
         PyList_GET_SIZE(lists.boundaries) == static_cast<Py_ssize_t>(areas_.size()) &&
         PyList_GET_SIZE(lists.pl_lines) == pl_line_count_;
}

bool ChainRegister::read(const State& state, Lists lists) {
  if (!has_one_owner(lists.boundaries) || !has_one_owner(lists.pl_lines)) return false;
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(lists.boundaries); ++i) {
    const Handle boundary = PyList_GET_ITEM(lists.boundaries, i);
    if (!read_chain(state, boundaries_, boundary)) return false;
    const double area = area_of(state, boundary);
    if (std::isnan(area) || (!areas_.empty() && area < areas_.back())) return false;
    areas_.push_back(area);
  }
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(lists.pl_lines); ++i) {
    if (!read_chain(state, pl_lines_, PyList_GET_ITEM(lists.pl_lines, i))) return false;
  }
  return true;
}

bool ChainRegister::read_chain(const State& state, ChainIndex& index, Handle chain) {
  const std::optional<std::size_t> hash = hash_of_chain(state, chain);
  if (!hash || !keeps_its_curves(state, chain)) return false;
  index.enter(*hash, chain, 0);
  enter_curves(state, chain);
  return true;
}

void ChainRegister::enter_curves(const State& state, Handle chain) {
  PyObject* curves = curves_of_plain_chain(state, chain);
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(curves); ++i) {
    PyObject* curve = PyList_GET_ITEM(curves, i);
    const std::optional<CurveKey> key = key_of_curve(state, curve);
    if (key && equals_something(*key)) curves_.try_emplace(*key, host::share(curve));
  }
}

}  // namespace dsettlement::geometry
