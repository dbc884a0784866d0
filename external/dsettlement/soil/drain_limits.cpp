#include "soil/drain_limits.hpp"

#include "host/object.hpp"
#include "host/text.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

// The values are read in the order in which they are compared, from the lower bound on.
void check_range(const State& state, Handle limits, Handle drain, const host::Name& position,
                 const char* message) {
  const Ref lower = host::item(limits, 0);
  const Ref value = host::get(drain, position);
  if (host::compare(lower, Py_LE, value) && host::compare(value, Py_LE, host::item(limits, 1))) {
    return;
  }
  state.toolkit.refuse(message,
                       {host::get(drain, position), host::item(limits, 0), host::item(limits, 1)});
}

// The levels are properties of the concrete model, which may look them up in its geometry or
// refuse.
void check_level(const State& state, Handle model, Handle drain, const host::Name& position,
                 const char* message) {
  const State::Names& names = state.names;
  const Ref lowest = host::get(model, names.private_min_vertical_drains);
  const Ref value = host::get(drain, position);
  if (host::compare(lowest, Py_LE, value) &&
      host::compare(value, Py_LE, host::get(model, names.private_max_vertical_drains))) {
    return;
  }
  state.toolkit.refuse(
      message, {host::get(drain, position), host::get(model, names.private_min_vertical_drains),
                host::get(model, names.private_max_vertical_drains)});
}

Ref validate(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  if (!host::is_true(host::get(self, names.private_has_vertical_drains))) return host::none();

  const Ref limits = host::get(self, names.private_limits);
  const Ref drain = host::get(self, names.private_vertical_drain);
  check_range(state, limits, drain, names.range_to,
              "Vertical drains 'range_to' ({}) must be between model limits ({} - {})");
  check_range(state, limits, drain, names.range_from,
              "Vertical drains 'range_from' ({}) must be between model limits ({} - {})");
  check_level(
      state, self, drain, names.bottom_position,
      R"(Vertical drains 'bottom_position' ({}) must be between top and bottom limits ({} - {}))");
  if (host::get(drain, names.position_drain).get() != Py_None) {
    check_level(
        state, self, drain, names.position_drain,
        R"(Vertical drains 'position_drain' ({}) must be between top and bottom limits ({} - {}))");
  }
  return host::none();
}

}  // namespace

void add_drain_limits(host::ClassBody& body, State& state) {
  body.add(state, host::method<validate>(
                      "_validate",
                      R"(Check the finished model; runs before each generation of an input file.

Here only vertical drains are held against the limits and the levels of the model; a model
without drains passes.

Raises ModelError for the first check that fails; the model stays as it is.)"));
}

}  // namespace dsettlement::soil
