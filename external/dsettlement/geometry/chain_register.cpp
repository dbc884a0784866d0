#include "geometry/chain_register.hpp"

#include <utility>

#include "host/object.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

bool is_reached_by_model_alone(const Ref& list) {
  return Py_REFCNT(list.get()) == 2;  // the model and this reference
}

// Whether nobody but the chain can reach its curves.
bool keeps_its_curves(const State& state, Handle chain) {
  const Ref fields = Ref::steal(PyObject_GenericGetDict(chain, nullptr));
  const bool has_fields_alone = Py_REFCNT(fields.get()) == 2;  // the chain and this function
  const Ref curves = curves_of_plain_chain(state, chain);
  return has_fields_alone && curves && Py_REFCNT(curves.get()) == 2;  // the chain and this one
}

}  // namespace

bool ChainRegister::mirrors(const State& state, const Source& source) const {
  return certainty_ && changes_ == state.changes.count &&
         source.boundaries.get() == source_.boundaries.get() &&
         source.pl_lines.get() == source_.pl_lines.get() &&
         PyList_GET_SIZE(source.boundaries.get()) == order_.size() &&
         PyList_GET_SIZE(source.pl_lines.get()) == pl_line_count_;
}

bool ChainRegister::take(const State& state, Source source) {
  if (!is_reached_by_model_alone(source.boundaries) ||
      !is_reached_by_model_alone(source.pl_lines)) {
    return false;
  }
  source_ = std::move(source);
  changes_ = state.changes.count;
  return read_lists(state);
}

Ref ChainRegister::curve(const State& state, const CurveKey& key) const {
  Ref found;
  static_cast<void>(curves_.find(HashOf()(key), [&](Place place) {
    found = curve_at(state, place);
    if (found && key_of_curve(state, found) != key) found = Ref();
    return static_cast<bool>(found);
  }));
  return found;
}

Ref ChainRegister::curve_at(const State& state, Place place) const {
  const Ref curves = curves_of_plain_chain(state, chains_[place.chain]);
  const auto position = static_cast<Py_ssize_t>(place.position);
  if (!curves || position >= PyList_GET_SIZE(curves.get())) return {};
  return host::share(PyList_GET_ITEM(curves.get(), position));
}

Ref ChainRegister::boundary(const ChainKey& key, Handle boundary) const {
  const ChainIndex::Entry* entry = boundaries_.find(key, boundary);
  return entry == nullptr ? Ref() : host::share(entry->chain);
}

Ref ChainRegister::pl_line(const ChainKey& key, Handle pl_line) const {
  const ChainIndex::Entry* entry = pl_lines_.find(key, pl_line);
  return entry == nullptr ? Ref() : host::share(entry->chain);
}

bool ChainRegister::add_boundary(const State& state, const ChainKey& key, Handle boundary) {
  if (!certainty_ || !keeps_its_curves(state, boundary)) return false;
  return certainty_.regain([&] {
    order_.add(source_.boundaries, boundary, area_of(key));
    enter(state, boundaries_, key, boundary);
    return true;
  });
}

bool ChainRegister::add_pl_line(const State& state, const ChainKey& key, Handle pl_line) {
  if (!certainty_ || !keeps_its_curves(state, pl_line)) return false;
  return certainty_.regain([&] {
    host::check(PyList_Append(source_.pl_lines.get(), pl_line));
    ++pl_line_count_;
    enter(state, pl_lines_, key, pl_line);
    return true;
  });
}

int ChainRegister::traverse(visitproc visit, void* arg) const {
  Py_VISIT(source_.boundaries.get());
  Py_VISIT(source_.pl_lines.get());
  for (const Ref& chain : chains_) Py_VISIT(chain.get());
  return 0;
}

void ChainRegister::clear() noexcept {
  certainty_.lose();
  has_twins_ = false;
  order_.clear();
  pl_line_count_ = 0;
  boundaries_ = {};
  pl_lines_ = {};
  curves_ = {};
  // Letting go of objects can run code that comes back here, so they are out of sight then.
  const auto chains = std::exchange(chains_, {});
  const Source source = std::exchange(source_, Source());
}

bool ChainRegister::read_lists(const State& state) {
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(source_.boundaries.get()); ++i) {
    const Ref boundary = host::share(PyList_GET_ITEM(source_.boundaries.get(), i));
    if (!read_boundary(state, boundary)) return false;
  }
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(source_.pl_lines.get()); ++i) {
    const Ref pl_line = host::share(PyList_GET_ITEM(source_.pl_lines.get(), i));
    if (!read_pl_line(state, pl_line)) return false;
  }
  return true;
}

bool ChainRegister::read_boundary(const State& state, Handle boundary) {
  const std::optional<ChainKey> key = key_of_chain(state, boundary);
  if (!key || !keeps_its_curves(state, boundary)) return false;
  const double area = area_of(*key);
  order_.append(area);
  if (!order_.is_kept()) return false;
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
    const Ref known = curve(state, key[i]);
    const Place place{number, i};
    if (!known) {
      curves_.add(HashOf()(key[i]), place);
    } else if (known.get() != curve_at(state, place).get()) {
      has_twins_ = true;
    }
  }
}

}  // namespace dsettlement::geometry
