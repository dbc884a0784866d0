#include "host/binding.hpp"

#include <algorithm>

#include "host/containers.hpp"
#include "host/text.hpp"
#include "host/wrong_call.hpp"

namespace dsettlement::host {

Binding::Binding(Module& module, std::span<const Parameter> parameters) {
  for (const Parameter& parameter : parameters) {
    const std::size_t index = names_.size();
    names_.push_back(Ref::steal(PyUnicode_InternFromString(parameter.name)));
    defaults_.push_back(module.constant(parameter.value));
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
}

void Binding::bind(Handle function, PyObject* const* arguments, std::size_t positional_count,
                   PyObject* keyword_names, std::span<PyObject*> bound, Owned& owned) const {
  const std::size_t taken = std::min(positional_count, positional_);
  std::copy_n(arguments, taken, bound.begin());
  std::fill(bound.begin() + static_cast<std::ptrdiff_t>(taken), bound.end(), nullptr);
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

  // Callers mostly keep to the declared order, so the search for a keyword starts behind the last.
  std::size_t expected = taken;
  const Py_ssize_t keyword_count = keyword_names == nullptr ? 0 : PyTuple_GET_SIZE(keyword_names);
  for (Py_ssize_t i = 0; i < keyword_count; ++i) {
    bind_keyword(function, PyTuple_GET_ITEM(keyword_names, i),
                 arguments[positional_count + static_cast<std::size_t>(i)], bound,
                 owned.keyword_rest, expected);
  }

  if (positional_count > positional_ && rest_ == absent) {
    refuse_surplus(function, *this, positional_count, bound);
  }
  for (std::size_t i = taken; i < named_; ++i) {
    if (bound[i] == nullptr) bound[i] = defaults_[i].get();
  }
  refuse_missing(function, *this, bound, taken, positional_, "positional");
  refuse_missing(function, *this, bound, positional_, named_, "keyword-only");
}

void Binding::bind_keyword(Handle function, PyObject* keyword, PyObject* value,
                           std::span<PyObject*> bound, Handle keyword_rest,
                           std::size_t& expected) const {
  if (PyUnicode_Check(keyword) == 0) refuse_keyword_that_is_no_text(function);
  const auto find = [&]() -> std::size_t {
    for (std::size_t i = expected; i < named_; ++i) {
      if (names_[i].get() == keyword) return i;
    }
    for (std::size_t i = 0; i < std::min(expected, named_); ++i) {
      if (names_[i].get() == keyword) return i;
    }
    // Interned texts are equal only if they are the same object.
    if (PyUnicode_CheckExact(keyword) != 0 && PyUnicode_CHECK_INTERNED(keyword) != 0) return absent;
    for (std::size_t i = 0; i < named_; ++i) {
      if (compare(keyword, Py_EQ, names_[i])) return i;
    }
    return absent;
  };
  const std::size_t index = find();
  if (index == absent) {
    if (keyword_rest_ == absent) refuse_unexpected_keyword(function, keyword);
    check(PyDict_SetItem(keyword_rest, keyword, value));
    return;
  }
  if (bound[index] != nullptr) refuse_second_value(function, keyword);
  bound[index] = value;
  expected = index + 1;
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
