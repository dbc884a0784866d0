// The numbers by which a document refers to points and curves.
#pragma once

#include <optional>
#include <vector>

#include "geometry/hashed_list.hpp"
#include "geometry/plain.hpp"
#include "host/arithmetic.hpp"
#include "host/containers.hpp"

namespace dsettlement::geometry {

// What is known of the entries of a list beforehand.
enum class Entries : std::uint8_t {
  any,
  same_where_equal,  // all are plain, and equal ones are the same object
  all_different,     // all are plain, and no two are equal
};

// Positions of the first equal entries of one of a model's lists, as `list.index` finds them.
//
// The answers come from an index as long as all objects met are plain: nothing can then have
// changed in the meantime. From the first other object on, each is searched for.
template <typename Key>
class Numbering {
 public:
  using Read = std::optional<Key> (*)(const State& state, host::Handle object);

  // `list` is the attribute of the model that the list stands in.
  Numbering(const State& state, host::Handle model, host::Handle list, Read read,
            Entries entries = Entries::any)
      : state_(state),
        model_(model),
        attribute_(list),
        read_(read),
        entries_(entries),
        list_(host::get(model, list)),
        is_certain_(PyList_CheckExact(list_.get()) != 0 && are_classes_as_made(state)) {
    if (is_certain_ && entries_ != Entries::all_different) index();
  }

  // The position counted from 1. Raises ValueError if there is no equal entry.
  [[nodiscard]] host::Ref number_of(host::Handle object) {
    if (const std::optional<Py_ssize_t> position = find(object)) {
      return host::Ref::steal(PyLong_FromSsize_t(*position + 1));
    }
    const host::Ref list = host::get(model_, attribute_);
    return host::sum(host::call_method(list, state_.names.index, object), host::integer(1));
  }

  // Objects are mostly asked for in the order of the list, so where the next one stands is guessed
  // first; this is the place of the first guess, counted from the end of the list if negative.
  void expect(Py_ssize_t position) { next_ = position < 0 ? count() + position : position; }

  // To be told when an object was met that is not plain.
  void doubt() { is_certain_ = false; }

 private:
  [[nodiscard]] Py_ssize_t count() const { return PyList_GET_SIZE(list_.get()); }

  [[nodiscard]] bool stands_at(Py_ssize_t position, PyObject* object) const {
    return position >= 0 && position < count() && PyList_GET_ITEM(list_.get(), position) == object;
  }

  [[nodiscard]] Py_ssize_t first_equal(Py_ssize_t position) const {
    return first_.empty() ? position : first_[static_cast<std::size_t>(position)];
  }

  void index() {
    first_.reserve(static_cast<std::size_t>(count()));
    for (Py_ssize_t i = 0; i < count() && is_certain_; ++i) {
      PyObject* entry = PyList_GET_ITEM(list_.get(), i);
      if (entries_ != Entries::any) {
        first_.push_back(by_object_.try_add(entry, i));
      } else if (const std::optional<Key> key = read_(state_, entry)) {
        first_.push_back(by_key_.try_add(*key, i));
      } else {
        doubt();
      }
    }
  }

  std::optional<Py_ssize_t> find(PyObject* object) {
    if (!is_certain_) return std::nullopt;
    if (stands_at(next_, object)) return first_equal(next_++);
    if (stands_at(next_ - 1, object)) return first_equal(next_ - 1);
    if (first_.empty()) index();
    const Py_ssize_t* position = look_up(object);
    if (position == nullptr) return std::nullopt;
    next_ = *position + 1;
    return *position;
  }

  const Py_ssize_t* look_up(PyObject* object) {
    if (entries_ != Entries::any) return by_object_.find(object);
    const std::optional<Key> key = read_(state_, object);
    if (!key) doubt();
    return key ? by_key_.find(*key) : nullptr;
  }

  const State& state_;
  host::Handle model_;
  host::Handle attribute_;
  Read read_;
  Entries entries_;
  host::Ref list_;
  bool is_certain_;
  Py_ssize_t next_ = 0;
  std::vector<Py_ssize_t> first_;  // for each entry the position of the first that equals it
  HashedMap<PyObject*, Py_ssize_t, HashOf> by_object_;
  HashedMap<Key, Py_ssize_t, HashOf> by_key_;
};

}  // namespace dsettlement::geometry
