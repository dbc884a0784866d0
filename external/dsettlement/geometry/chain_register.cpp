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

// Whether nobody but the chain can reach its curves.
bool keeps_its_curves(const State& state, Handle chain) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(chain, nullptr));
  const bool has_fields_alone = Py_REFCNT(fields.get()) == 2;  // the chain and this function
  const Ref curves = curves_of_plain_chain(state, chain);
  return has_fields_alone && curves && Py_REFCNT(curves.get()) == 2;  // the chain and this one
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
  changes_ = state.changes.count;
  is_certain_ = true;
  return true;
}

PyObject* ChainRegister::curve(const State& state, const CurveKey& key) const {
  const Place* place = curves_.find(HashOf()(key), [&](Place candidate) {
    PyObject* curve = curve_at(state, candidate);
    return curve != nullptr && key_of_curve(state, curve) == key;
  });
  return place == nullptr ? nullptr : curve_at(state, *place);
}

PyObject* ChainRegister::curve_at(const State& state, Place place) const {
  const Ref curves = curves_of_plain_chain(state, chains_[place.chain]);
  const auto position = static_cast<Py_ssize_t>(place.position);
  if (!curves || position >= PyList_GET_SIZE(curves.get())) return nullptr;
  return PyList_GET_ITEM(curves.get(), position);
}

PyObject* ChainRegister::boundary(const ChainKey& key, Handle boundary) const {
  const ChainIndex::Entry* entry = boundaries_.find(key, boundary);
  return entry == nullptr ? nullptr : entry->chain;
}

PyObject* ChainRegister::pl_line(const ChainKey& key, Handle pl_line) const {
  const ChainIndex::Entry* entry = pl_lines_.find(key, pl_line);
  return entry == nullptr ? nullptr : entry->chain;
}

bool ChainRegister::add_boundary(const State& state, const ChainKey& key, Handle boundary) {
  const double area = area_of(key);
  if (std::isnan(area) || !keeps_its_curves(state, boundary)) return false;
  is_certain_ = false;  // until list and register agree again
  // Where a stable sort puts the last of a list that was sorted before.
  const auto place = std::ranges::upper_bound(areas_, area);
  const auto position = place - areas_.begin();
  areas_.insert(place, area);
  host::check(PyList_Insert(lists_.boundaries, position, boundary));
  enter(state, boundaries_, key, boundary);
  is_certain_ = true;
  return true;
}

bool ChainRegister::add_pl_line(const State& state, const ChainKey& key, Handle pl_line) {
  if (!keeps_its_curves(state, pl_line)) return false;
  is_certain_ = false;  // until list and register agree again
  host::check(PyList_Append(lists_.pl_lines, pl_line));
  enter(state, pl_lines_, key, pl_line);
  ++pl_line_count_;
  is_certain_ = true;
  return true;
}

int ChainRegister::traverse(visitproc visit, void* arg) const {
  for (const Ref& chain : chains_) Py_VISIT(chain.get());
  return 0;
}

void ChainRegister::clear() noexcept {
  is_certain_ = false;
  has_twins_ = false;
  shares_curves_ = false;
  areas_.clear();
  pl_line_count_ = 0;
  boundaries_ = {};
  pl_lines_ = {};
  curves_ = {};
  // Letting go of a chain can run code that comes back here, so the chains are out of sight then.
  const auto chains = std::exchange(chains_, {});
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
    if (!read_boundary(state, PyList_GET_ITEM(lists.boundaries, i))) return false;
  }
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(lists.pl_lines); ++i) {
    if (!read_pl_line(state, PyList_GET_ITEM(lists.pl_lines, i))) return false;
  }
  return true;
}

bool ChainRegister::read_boundary(const State& state, Handle boundary) {
  const std::optional<ChainKey> key = key_of_chain(state, boundary);
  if (!key || !keeps_its_curves(state, boundary)) return false;
  const double area = area_of(*key);
  if (std::isnan(area) || (!areas_.empty() && area < areas_.back())) return false;
  areas_.push_back(area);
  enter(state, boundaries_, *key, boundary);
  return true;
}

bool ChainRegister::read_pl_line(const State& state, Handle pl_line) {
  const std::optional<ChainKey> key = key_of_chain(state, pl_line);
  if (!key || !keeps_its_curves(state, pl_line)) return false;
  ++pl_line_count_;
  enter(state, pl_lines_, *key, pl_line);
  return true;
}

void ChainRegister::enter(const State& state, ChainIndex& index, const ChainKey& key,
                          Handle chain) {
  const auto number = static_cast<std::uint32_t>(chains_.size());
  chains_.push_back(host::share(chain));
  if (index.enter(key, chain, number).position != number) has_twins_ = true;
  for (std::uint32_t i = 0; i < key.size(); ++i) {
    PyObject* known = curve(state, key[i]);
    const Place place{number, i};
    if (known == nullptr) {
      curves_.add(HashOf()(key[i]), place);
    } else {
      (known == curve_at(state, place) ? shares_curves_ : has_twins_) = true;
    }
  }
}

}  // namespace dsettlement::geometry
