// What the classes of value objects are made of.
#pragma once

#include "geometry/equality.hpp"
#include "geometry/state.hpp"
#include "host/class_body.hpp"
#include "host/text.hpp"

namespace dsettlement::geometry {

// A class of objects that are what their two fields are: equality, hash and text form. `type` is
// the class in the state, `first` and `second` are the names of the fields.
template <auto type, auto first, auto second>
class ValueObject {
 public:
  static void add_to(host::ClassBody& body, State& state, const char* documentation_of_repr) {
    body.add(state, host::method<equals>("__eq__", other_parameters, "Return self == other.")
                        .returning("bool"));
    body.add(state, host::method<hash>("__hash__", "Return hash(self).").returning("int"));
    body.add(state, host::method<show>("__repr__", documentation_of_repr).returning("str"));
  }

 private:
  // Fields are compared as they are, by their own equality and without a tolerance.
  static host::Ref equals(State& state, host::Arguments arguments) {
    const auto [self, other] = arguments.first<std::size(other_parameters)>();
    if (!host::is_instance(other, (state.*type).now())) return not_implemented();
    host::Ref result = are_equal(self, other, state.names.*first);
    if (host::is_true(result)) result = are_equal(self, other, state.names.*second);
    return result;
  }

  static host::Ref are_equal(host::Handle left, host::Handle right, host::Handle field) {
    const host::Ref value = host::get(left, field);
    return host::Ref::steal(
        PyObject_RichCompare(value.get(), host::get(right, field).get(), Py_EQ));
  }

  // hash((self.first, self.second))
  static host::Ref hash(State& state, host::Arguments arguments) {
    const host::Ref left = host::get(arguments[0], state.names.*first);
    const host::Ref right = host::get(arguments[0], state.names.*second);
    return hash_of(host::Ref::steal(PyTuple_Pack(2, left.get(), right.get())));
  }

  static host::Ref show(State& state, host::Arguments arguments) {
    const host::Ref left = host::get(arguments[0], state.names.*first);
    const host::Ref right = host::get(arguments[0], state.names.*second);
    return host::text("{}({}, {})", {(state.*type).name(), left, right});
  }
};

}  // namespace dsettlement::geometry
