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

std::vector<Ref> missing_between(const Binding& binding, std::span<PyObject* const> bound,
                                 std::size_t begin, std::size_t end) {
  std::vector<Ref> missing;
  for (std::size_t i = begin; i < end; ++i) {
    if (bound[i] == nullptr) missing.push_back(binding.name(i));
  }
  return missing;
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

void refuse_surplus(Handle function, const Binding& binding, std::size_t count,
                    const Binding::Given& by_keyword) {
  const std::size_t most = binding.positional();
  std::size_t least = most;
  while (least > 0 && binding.default_of(least - 1)) --least;
  const Ref takes = least == most ? text("{}", {count_of(most)})
                                  : text("from {} to {}", {count_of(least), count_of(most)});
  const std::size_t keyword_only = (by_keyword >> most).count();
  const Ref also = keyword_only == 0
                       ? text("", {})
                       : text(" positional argument{} (and {} keyword-only argument{})",
                              {plural(count), count_of(keyword_only), plural(keyword_only)});
  // What Python says: plural unless exactly one is the most that it takes.
  const Ref takes_plural = least == most ? plural(most) : plural(2);
  const Ref verb =
      Ref::steal(PyUnicode_FromString(count == 1 && keyword_only == 0 ? "was" : "were"));
  raise(PyExc_TypeError, text("{}() takes {} positional argument{} but {}{} {} given",
                              {function, takes, takes_plural, count_of(count), also, verb}));
}

void refuse_missing(Handle function, const Binding& binding, std::span<PyObject* const> bound) {
  // Those by position are told first, and alone.
  const char* kind = "positional";
  std::vector<Ref> missing = missing_between(binding, bound, 0, binding.positional());
  if (missing.empty()) {
    kind = "keyword-only";
    missing = missing_between(binding, bound, binding.positional(),
                              binding.positional() + binding.keyword_only());
  }
  raise(PyExc_TypeError,
        text("{}() missing {} required {} argument{}: {}",
             {function, count_of(missing.size()), Ref::steal(PyUnicode_FromString(kind)),
              plural(missing.size()), listed(missing)}));
}

}  // namespace dsettlement::host
