#include "geometry/index/numbering.hpp"

#include "geometry/index/index.hpp"
#include "geometry/index/plain.hpp"
#include "host/containers.hpp"
#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

namespace {

// Positions of first equal entries.
template <typename Key>
class Positions {
 public:
  void reserve(Py_ssize_t count) { first_.reserve(static_cast<std::size_t>(count)); }

  // Takes in the next entry; returns the position of the first one that is equal.
  Py_ssize_t enter(const Key& key) { return first_.try_add(key, next_++); }

  // The position, or null if there is no such entry.
  [[nodiscard]] const Py_ssize_t* of(const Key& key) const { return first_.find(key); }

 private:
  HashedMap<Key, Py_ssize_t, HashOf> first_;
  Py_ssize_t next_ = 0;
};

Ref counted_from_1(Py_ssize_t position) {
  return Ref::steal(PyLong_FromSsize_t(position + 1));
}

// A list among the model's own attributes, or an empty Ref.
Ref own_list(Handle model, Handle name) {
  const Ref list = host::value_in(host::own_attributes(model), name);
  return list && PyList_CheckExact(list.get()) != 0 ? list : Ref();
}

// Calls visit(const Ref& entry) for each entry of a list until it answers false; whether it never
// did.
template <typename Visit>
bool visit_all(const Ref& list, Visit&& visit) {
  for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list.get()); ++i) {
    if (!visit(host::share(PyList_GET_ITEM(list.get(), i)))) return false;
  }
  return true;
}

// Calls visit(const ChainKey& key) for each chain of a list; false if one is not plain.
template <typename Visit>
bool visit_keys(const State& state, const Ref& chains, Visit&& visit) {
  return visit_all(chains, [&](const Ref& chain) {
    const std::optional<ChainKey> key = key_of_chain(state, chain);
    return key && visit(*key);
  });
}

std::optional<Positions<PointKey>> positions_of_points(const State& state, Handle model) {
  const Ref list = own_list(model, state.names.private_points);
  if (!list) return std::nullopt;
  Positions<PointKey> positions;
  positions.reserve(PyList_GET_SIZE(list.get()));
  const bool are_plain = visit_all(list, [&](const Ref& point) {
    const std::optional<PointKey> key = key_of_point(state, point);
    if (key) positions.enter(*key);
    return key.has_value();
  });
  return are_plain ? std::optional(std::move(positions)) : std::nullopt;
}

// The numbers of points, of which one is often asked for twice in a row: a curve begins where the
// one before it ends.
class PointNumbers {
 public:
  explicit PointNumbers(const Positions<PointKey>& positions) : positions_(positions) {}

  // The number, or an empty Ref.
  Ref of(const PointKey& point) {
    if (!last_number_ || point != last_) {
      const Py_ssize_t* position = positions_.of(point);
      last_number_ = position == nullptr ? Ref() : counted_from_1(*position);
      last_ = point;
    }
    return last_number_;
  }

 private:
  const Positions<PointKey>& positions_;
  PointKey last_;
  Ref last_number_;
};

// Numbers the curves of a list of chains, which come behind others in the order of the model.
Ref number_chains(const State& state, Positions<CurveKey>& positions, const Ref& chains) {
  host::List list;
  const bool are_plain = visit_keys(state, chains, [&](const ChainKey& chain) {
    host::List numbers;
    for (const CurveKey& curve : chain) numbers.append(counted_from_1(positions.enter(curve)));
    list.append(numbers.done());
    return true;
  });
  return are_plain ? list.done() : Ref();
}

// Positions of the chains of a list in which no two are equal.
class ChainPositions {
 public:
  explicit ChainPositions(const Ref& list) {
    by_object_.reserve(PyList_GET_SIZE(list.get()));
    visit_all(list, [&](const Ref& chain) { return by_object_.enter(chain.get()), true; });
  }

  // The position of a chain, or of the one that `find` finds by its key.
  template <typename Find>
  std::optional<Py_ssize_t> of(const State& state, const Ref& chain, Find&& find) const {
    const Py_ssize_t* position = by_object_.of(chain.get());
    if (position == nullptr) {
      const std::optional<ChainKey> key = key_of_chain(state, chain);
      const Ref known = key ? find(*key) : Ref();
      position = known ? by_object_.of(known.get()) : nullptr;
    }
    return position == nullptr ? std::nullopt : std::optional(*position);
  }

 private:
  Positions<PyObject*> by_object_;
};

bool is_integer(const Ref& object) {
  return PyLong_CheckExact(object.get()) != 0 || PyBool_Check(object.get()) != 0;
}

// Whether an object is what may stand in the place of a pl-line, of a class that has nothing to say
// about what it is.
bool is_code(const State& state, const Ref& object) {
  return is_integer(object) || object.get() == Py_None || PyFloat_CheckExact(object.get()) != 0 ||
         PyUnicode_CheckExact(object.get()) != 0 || state.boundary.is_class_of(object);
}

class LayerNumbers {
 public:
  LayerNumbers(const State& state, const Lease<ChainCache>& chains)
      : state_(state),
        chains_(chains),
        boundaries_(chains->boundary_list()),
        pl_lines_(chains->pl_line_list()) {}

  // The mapping of a layer, or an empty Ref.
  [[nodiscard]] Ref of(const Ref& layer) const {
    const State::Names& names = state_.names;
    if (!state_.layer.is_class_of(layer)) return {};
    const Ref material = host::own_attribute(layer, names.private_material);
    const Ref top = boundary(host::own_attribute(layer, names.private_boundary_top));
    const Ref bottom = boundary(host::own_attribute(layer, names.private_boundary_bottom));
    const Ref pl_top = pl_line(host::own_attribute(layer, names.private_pl_line_top));
    const Ref pl_bottom = pl_line(host::own_attribute(layer, names.private_pl_line_bottom));
    if (!material || !top || !bottom || !pl_top || !pl_bottom) return {};
    return host::Mapping()
        .put(names.material, material)
        .put(names.boundary_top, top)
        .put(names.boundary_bottom, bottom)
        .put(names.pl_top, pl_top)
        .put(names.pl_bottom, pl_bottom)
        .done();
  }

 private:
  // Boundaries alone are counted from 0.
  [[nodiscard]] Ref boundary(const Ref& object) const {
    if (!object || is_integer(object)) return object;
    const auto position = boundaries_.of(
        state_, object, [&](const ChainKey& key) { return chains_->boundary(state_, key); });
    return position ? Ref::steal(PyLong_FromSsize_t(*position)) : Ref();
  }

  [[nodiscard]] Ref pl_line(const Ref& object) const {
    if (!object || is_code(state_, object)) return object;
    if (!state_.pl_line.is_class_of(object)) return {};
    const auto position = pl_lines_.of(
        state_, object, [&](const ChainKey& key) { return chains_->pl_line(state_, key); });
    return position ? counted_from_1(*position) : Ref();
  }

  const State& state_;
  const Lease<ChainCache>& chains_;
  ChainPositions boundaries_;
  ChainPositions pl_lines_;
};

}  // namespace

Ref number_curves(const State& state, Handle model) {
  const auto chains = lease_chains(state, model);
  if (!chains) return {};
  const std::optional<Positions<PointKey>> positions = positions_of_points(state, model);
  if (!positions) return {};
  PointNumbers numbers(*positions);
  host::List curves;
  const auto number = [&](const ChainKey& chain) {
    for (const auto& [p1, p2] : chain) {
      const Ref first = numbers.of(p1);
      const Ref second = first ? numbers.of(p2) : Ref();
      if (!second) return false;
      const Ref pair = Ref::steal(PyTuple_Pack(2, first.get(), second.get()));
      host::leave_to_its_count(pair);
      curves.append(pair);
    }
    return true;
  };
  const bool are_found = visit_keys(state, chains->boundary_list(), number) &&
                         visit_keys(state, chains->pl_line_list(), number);
  return are_found ? curves.done() : Ref();
}

Ref number_boundaries(const State& state, Handle model) {
  const auto chains = lease_chains(state, model);
  if (!chains) return {};
  Positions<CurveKey> positions;
  return number_chains(state, positions, chains->boundary_list());
}

Ref number_pl_lines(const State& state, Handle model) {
  const auto chains = lease_chains(state, model);
  if (!chains) return {};
  Positions<CurveKey> positions;
  const bool are_plain = visit_keys(state, chains->boundary_list(), [&](const ChainKey& chain) {
    for (const CurveKey& curve : chain) positions.enter(curve);
    return true;
  });
  return are_plain ? number_chains(state, positions, chains->pl_line_list()) : Ref();
}

Ref number_layers(const State& state, Handle model) {
  const auto chains = lease_chains(state, model);
  const Ref list = own_list(model, state.names.private_layers);
  if (!chains || !list) return {};
  const LayerNumbers numbers(state, chains);
  host::List layers;
  const bool are_plain = visit_all(list, [&](const Ref& layer) {
    const Ref numbered = numbers.of(layer);
    if (numbered) layers.append(numbered);
    return static_cast<bool>(numbered);
  });
  return are_plain ? layers.done() : Ref();
}

}  // namespace dsettlement::geometry
