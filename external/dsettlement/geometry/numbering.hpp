// The numbers by which a document refers to points and curves.
#pragma once

#include <optional>
#include <unordered_map>

#include "geometry/plain.hpp"
#include "host/arithmetic.hpp"
#include "host/containers.hpp"

namespace dsettlement::geometry {

// Positions of the first equal entries of one of a model's lists, as `list.index` finds them.
//
// The answers come from an index as long as all objects met are plain: nothing can then have
// changed in the meantime. From the first other object on, each is searched for.
template <typename Key>
class Numbering {
 public:
  using Read = std::optional<Key> (*)(const State& state, host::Handle object);

  // `list` is the attribute of the model that the list stands in.
  Numbering(const State& state, host::Handle model, host::Handle list, Read read)
      : state_(state), model_(model), attribute_(list), read_(read), list_(host::get(model, list)) {
    is_certain_ = PyList_CheckExact(list_.get()) != 0 && are_classes_as_made(state);
    const Py_ssize_t count = is_certain_ ? PyList_GET_SIZE(list_.get()) : 0;
    for (Py_ssize_t i = 0; i < count && is_certain_; ++i) enter(PyList_GET_ITEM(list_.get(), i), i);
  }

  // The position counted from 1. Raises ValueError if there is no equal entry.
  [[nodiscard]] host::Ref number_of(host::Handle object) {
    if (const std::optional<Py_ssize_t> position = find(object)) {
      return host::Ref::steal(PyLong_FromSsize_t(*position + 1));
    }
    const Ref list = host::get(model_, attribute_);
    return host::sum(host::call_method(list, state_.names.index, object), host::integer(1));
  }

  // To be told when an object was met that is not plain.
  void doubt() { is_certain_ = false; }

 private:
  using Ref = host::Ref;

  void enter(PyObject* entry, Py_ssize_t position) {
    const std::optional<Key> key = read_(state_, entry);
    if (!key) {
      is_certain_ = false;
    } else if (equals_something(*key)) {
      by_key_.try_emplace(*key, position);
    } else {
      by_identity_.try_emplace(entry, position);  // what equals nothing is still found as itself
    }
  }

  std::optional<Py_ssize_t> find(PyObject* object) {
    if (!is_certain_) return std::nullopt;
    const std::optional<Key> key = read_(state_, object);
    if (!key) {
      is_certain_ = false;
      return std::nullopt;
    }
    if (const auto found = by_key_.find(*key); found != by_key_.end()) return found->second;
    if (const auto found = by_identity_.find(object); found != by_identity_.end()) {
      return found->second;
    }
    return std::nullopt;
  }

  const State& state_;
  host::Handle model_;
  host::Handle attribute_;
  Read read_;
  Ref list_;
  bool is_certain_ = false;
  std::unordered_map<Key, Py_ssize_t, HashOf> by_key_;
  std::unordered_map<PyObject*, Py_ssize_t> by_identity_;
};

}  // namespace dsettlement::geometry
