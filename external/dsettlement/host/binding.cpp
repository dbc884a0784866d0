#include "host/binding.hpp"

#include <algorithm>
#include <bit>

#include "host/containers.hpp"
#include "host/text.hpp"
#include "host/wrong_call.hpp"

namespace dsettlement::host {

Binding::Binding(Module& module, std::span<const Parameter> parameters) {
  for (const Parameter& parameter : parameters) {
    const std::size_t index = names_.size();
    names_.push_back(Ref::steal(PyUnicode_InternFromString(parameter.name)));
    defaults_.push_back(module.constant(parameter.value));
    const bool is_named = parameter.passing == Passing::by_position_or_keyword ||
                          parameter.passing == Passing::by_keyword;
    if (is_named && (rest_ != absent || keyword_rest_ != absent)) {
      raise(PyExc_SystemError, "parameters that collect the rest of a call come last in a table");
    }
    switch (parameter.passing) {
      case Passing::by_position_or_keyword:
        positional_ = named_ = index + 1;
        break;
      case Passing::by_keyword:
        named_ = index + 1;
        break;
      case Passing::rest:
        rest_ = index;
        break;
      case Passing::keyword_rest:
        keyword_rest_ = index;
        break;
    }
  }
  if (names_.size() > most_parameters) {
    raise(PyExc_SystemError, "an operation has more parameters than a call can lay out");
  }
  for (std::size_t i = 0; i < named_; ++i) {
    layout_.push_back(defaults_[i].get());
    if (!defaults_[i]) required_.push_back(i);
  }
  index_names();
}

namespace {

constexpr std::uint8_t free_place = 0xFF;

std::size_t hash_address(const void* address) {
  // Objects stand at multiples of 16.
  const auto bits = reinterpret_cast<std::uintptr_t>(address) >> 4U;
  return bits ^ (bits >> 9U);
}

}  // namespace

void Binding::index_names() {
  places_by_address_.assign(std::bit_ceil(2 * named_ + 2), free_place);
  const std::size_t mask = places_by_address_.size() - 1;
  for (std::size_t i = 0; i < named_; ++i) {
    std::size_t slot = hash_address(names_[i].get()) & mask;
    while (places_by_address_[slot] != free_place) slot = (slot + 1) & mask;
    places_by_address_[slot] = static_cast<std::uint8_t>(i);
  }
}

std::size_t Binding::find_same(PyObject* keyword) const noexcept {
  const std::size_t mask = places_by_address_.size() - 1;
  std::size_t slot = hash_address(keyword) & mask;
  for (; places_by_address_[slot] != free_place; slot = (slot + 1) & mask) {
    const std::size_t place = places_by_address_[slot];
    if (names_[place].get() == keyword) return place;
  }
  return absent;
}

std::size_t Binding::find(PyObject* keyword) const {
  const std::size_t place = find_same(keyword);
  if (place != absent) return place;
  // Interned texts are equal only if they are the same object.
  if (PyUnicode_CheckExact(keyword) != 0 && PyUnicode_CHECK_INTERNED(keyword) != 0) return absent;
  for (std::size_t i = 0; i < named_; ++i) {
    if (compare(keyword, Py_EQ, names_[i])) return i;
  }
  return absent;
}

void Binding::bind(Handle function, PyObject* const* arguments, std::size_t positional_count,
                   PyObject* keyword_names, std::span<PyObject*> bound, Owned& owned) const {
  const std::size_t taken = std::min(positional_count, positional_);
  std::copy_n(arguments, taken, bound.begin());
  std::copy(layout_.begin() + static_cast<std::ptrdiff_t>(taken), layout_.end(),
            bound.begin() + static_cast<std::ptrdiff_t>(taken));
  if (keyword_rest_ != absent) {
    owned.keyword_rest = Ref::steal(PyDict_New());
    bound[keyword_rest_] = owned.keyword_rest.get();
  }
  if (rest_ != absent) {
    const std::size_t surplus = positional_count - taken;
    owned.rest = Ref::steal(PyTuple_New(static_cast<Py_ssize_t>(surplus)));
    for (std::size_t i = 0; i < surplus; ++i) {
      PyTuple_SET_ITEM(owned.rest.get(), static_cast<Py_ssize_t>(i),
                       share(arguments[taken + i]).release());
    }
    bound[rest_] = owned.rest.get();
  }

  // The checks run in the order in which Python makes them for a function.
  Given given;
  const Py_ssize_t keyword_count = keyword_names == nullptr ? 0 : PyTuple_GET_SIZE(keyword_names);
  for (Py_ssize_t i = 0; i < keyword_count; ++i) {
    PyObject* keyword = PyTuple_GET_ITEM(keyword_names, i);
    PyObject* value = arguments[positional_count + static_cast<std::size_t>(i)];
    if (PyUnicode_Check(keyword) == 0) refuse_keyword_that_is_no_text(function);
    const std::size_t place = find(keyword);
    if (place == absent) {
      if (keyword_rest_ == absent) refuse_unexpected_keyword(function, keyword);
      check(PyDict_SetItem(owned.keyword_rest.get(), keyword, value));
      continue;
    }
    if (place < taken || given[place]) refuse_second_value(function, keyword);
    bound[place] = value;
    given.set(place);
  }
  if (positional_count > positional_ && rest_ == absent) {
    refuse_surplus(function, *this, positional_count, given);
  }
  for (const std::size_t place : required_) {
    if (bound[place] == nullptr) refuse_missing(function, *this, bound);
  }
}

Ref Binding::signature() const {
  List parts;
  bool star_shown = false;
  // Python writes `*rest` in front of the parameters that go by keyword only, and a bare `*` where
  // there is no such parameter.
  const auto show_star = [&] {
    if (star_shown) return;
    star_shown = true;
    if (rest_ != absent) {
      parts.append(text("*{}", {names_[rest_]}));
    } else if (keyword_only() > 0) {
      parts.append(text("*", {}));
    }
  };
  for (std::size_t i = 0; i < named_; ++i) {
    if (i >= positional_) show_star();
    if (!defaults_[i]) {
      parts.append(names_[i]);
    } else {
      parts.append(text("{}={}", {names_[i], Ref::steal(PyObject_Repr(defaults_[i].get()))}));
    }
  }
  show_star();
  if (keyword_rest_ != absent) parts.append(text("**{}", {names_[keyword_rest_]}));
  const Ref comma = text(", ", {});
  return text("({})", {Ref::steal(PyUnicode_Join(comma.get(), parts.done().get()))});
}

}  // namespace dsettlement::host
