// The numbers by which a document refers to points and curves.
#pragma once

#include <optional>

#include "geometry/hashed_list.hpp"
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

  // `read` gives the key of a plain object, or nothing. Where equal entries are known to be the
  // same, an object can be its own key.
  // `list` is the attribute of the model that the list stands in; `descriptor` is what the class of
  // the model has under that name if it is this module's own doing, or null for nothing.
  Numbering(const State& state, host::Handle model, host::Handle list, PyObject* descriptor,
            Read read)
      : state_(state),
        model_(model),
        attribute_(list),
        read_(read),
        is_certain_(host::gets_plainly(model, list, descriptor) && are_classes_as_made(state)) {}

  // The position counted from 1. Raises ValueError if there is no equal entry.
  [[nodiscard]] host::Ref number_of(host::Handle object) {
    if (is_certain_ && last_.get() == static_cast<PyObject*>(object)) return last_number_;
    if (const std::optional<Py_ssize_t> position = find(object)) {
      last_ = host::share(object);
      last_number_ = host::Ref::steal(PyLong_FromSsize_t(*position + 1));
      return last_number_;
    }
    doubt();
    const host::Ref list = host::get(model_, attribute_);
    return host::sum(host::call_method(list, state_.names.index, object), host::integer(1));
  }

  // To be told before anything is met that is not plain: what it does can change the list.
  void doubt() { is_certain_ = false; }

 private:
  // Is put off until the first number is asked for, as a search would look at nothing before.
  void index() {
    list_ = host::get(model_, attribute_);
    if (PyList_CheckExact(list_.get()) == 0) return doubt();
    positions_.reserve(static_cast<std::size_t>(PyList_GET_SIZE(list_.get())));
    for (Py_ssize_t i = 0; is_certain_ && i < PyList_GET_SIZE(list_.get()); ++i) {
      const host::Ref entry = host::share(PyList_GET_ITEM(list_.get(), i));
      if (const std::optional<Key> key = read_(state_, entry)) {
        positions_.try_add(*key, i);
      } else {
        doubt();
      }
    }
  }

  std::optional<Py_ssize_t> find(host::Handle object) {
    if (!is_certain_) return std::nullopt;
    const std::optional<Key> key = read_(state_, object);
    if (!key) {
      doubt();
      return std::nullopt;
    }
    if (!list_) index();
    const Py_ssize_t* position = is_certain_ ? positions_.find(*key) : nullptr;
    return position == nullptr ? std::nullopt : std::optional(*position);
  }

  const State& state_;
  host::Handle model_;
  host::Handle attribute_;
  Read read_;
  bool is_certain_;
  host::Ref list_;
  HashedMap<Key, Py_ssize_t, HashOf> positions_;
  // A curve mostly begins at the point that was asked for last.
  host::Ref last_;
  host::Ref last_number_;
};

}  // namespace dsettlement::geometry
