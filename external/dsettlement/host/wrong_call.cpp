#include "host/wrong_call.hpp"

#include "host/containers.hpp"
#include "host/text.hpp"

namespace dsettlement::host {

namespace {

Ref plural(std::size_t count) {
  return Ref::steal(PyUnicode_FromString(count == 1 ? "" : "s"));
}

Ref count_of(std::size_t count) {
  return Ref::steal(PyLong_FromSize_t(count));
}

// "'a'", "'a' and 'b'", "'a', 'b', and 'c'".
Ref listed(const std::vector<Ref>& names) {
  std::vector<Ref> shown;
  shown.reserve(names.size());
  for (const Ref& name : names) shown.push_back(Ref::steal(PyObject_Repr(name.get())));
  if (shown.size() == 1) return shown[0];
  if (shown.size() == 2) return text("{} and {}", {shown[0], shown[1]});
  Ref line = shown[0];
  for (std::size_t i = 1; i + 1 < shown.size(); ++i) line = text("{}, {}", {line, shown[i]});
  return text("{}, and {}", {line, shown.back()});
}

}  // namespace

void refuse_keyword_that_is_no_text(Handle function) {
  raise(PyExc_TypeError, text("{}() keywords must be strings", {function}));
}

void refuse_unexpected_keyword(Handle function, Handle keyword) {
  raise(PyExc_TypeError, text("{}() got an unexpected keyword argument '{}'", {function, keyword}));
}

void refuse_second_value(Handle function, Handle parameter) {
  raise(PyExc_TypeError, text("{}() got multiple values for argument '{}'", {function, parameter}));
}

void refuse_surplus(Handle function, const Binding& binding, std::size_t given,
                    std::span<PyObject* const> bound) {
  const std::size_t most = binding.positional();
  std::size_t least = most;
  while (least > 0 && binding.default_of(least - 1)) --least;
  const Ref takes = least == most ? text("{}", {count_of(most)})
                                  : text("from {} to {}", {count_of(least), count_of(most)});
  std::size_t by_keyword = 0;
  for (std::size_t i = most; i < most + binding.keyword_only(); ++i) {
    if (bound[i] != nullptr) ++by_keyword;
  }
  const Ref also = by_keyword == 0
                       ? text("", {})
                       : text(" positional argument{} (and {} keyword-only argument{})",
                              {plural(given), count_of(by_keyword), plural(by_keyword)});
  // What Python says: plural unless exactly one is the most that it takes.
  const Ref takes_plural = least == most ? plural(most) : plural(2);
  const Ref verb = Ref::steal(PyUnicode_FromString(given == 1 && by_keyword == 0 ? "was" : "were"));
  raise(PyExc_TypeError, text("{}() takes {} positional argument{} but {}{} {} given",
                              {function, takes, takes_plural, count_of(given), also, verb}));
}

void refuse_missing(Handle function, const Binding& binding, std::span<PyObject* const> bound,
                    std::size_t begin, std::size_t end, const char* kind) {
  std::vector<Ref> missing;
  for (std::size_t i = begin; i < end; ++i) {
    if (bound[i] == nullptr) missing.push_back(binding.name(i));
  }
  if (missing.empty()) return;
  const Ref kind_text = Ref::steal(PyUnicode_FromString(kind));
  raise(PyExc_TypeError, text("{}() missing {} required {} argument{}: {}",
                              {function, count_of(missing.size()), kind_text,
                               plural(missing.size()), listed(missing)}));
}

}  // namespace dsettlement::host
