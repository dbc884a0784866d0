#include "model/calculation_times.hpp"

#include "host/containers.hpp"
#include "host/elements.hpp"
#include "host/text.hpp"

namespace dsettlement::model {

using host::Arguments;
using host::Parameter;
using host::Ref;

namespace {

constexpr Parameter parameters[] = {host::self, host::rest("time", "int")};

Ref set_calculation_times(State& state, Arguments arguments) {
  const auto [self, times] = arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;

  const Ref different = Ref::steal(PySet_New(times));
  if (PySet_GET_SIZE(different.get()) != PyTuple_GET_SIZE(times)) {
    state.toolkit.refuse("All times must be unique");
  }
  const Ref zero = host::integer(0);
  for (const Ref& time : host::Elements(times)) {
    const bool has_begun = host::compare(zero, Py_LE, time);
    const Ref end = host::get(self, names.private_end_of_settlement_calculation);
    if (!has_begun || !host::compare(time, Py_LE, end)) {
      state.toolkit.refuse("All times must be >= 0 and <= end of settlement calculation ({})",
                           {end});
    }
  }
  host::set(self, names.private_calculation_times, host::list_of(times));
  return host::none();
}

}  // namespace

void add_calculation_times(host::ClassBody& body, State& state) {
  body.add(state, host::method<set_calculation_times>(
                      "set_calculation_times", parameters,
                      R"(Set the times at which results are obtained, in place of those set before.

time: any number of different times [days], each from 0 to the end of the settlement
    calculation; their order is kept.

Raises ModelError if two times are equal or one is out of range; the times set before then
stay.)"));
}

}  // namespace dsettlement::model
