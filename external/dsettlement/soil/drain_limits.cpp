#include "soil/drain_limits.hpp"

#include "host/object.hpp"
#include "host/text.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::Handle;
using host::Ref;

namespace {

void check_range(const State& state, Handle limits, Handle value, const char* message) {
  if (host::compare(host::item(limits, 0), Py_LE, value) &&
      host::compare(value, Py_LE, host::item(limits, 1))) {
    return;
  }
  host::raise(state.toolkit.model_error.original(),
              host::text(message, {value, host::item(limits, 0), host::item(limits, 1)}));
}

// The levels are properties of the concrete model, which may look them up in its geometry or
// refuse.
void check_level(const State& state, Handle model, Handle value, const char* message) {
  const State::Names& names = state.names;
  if (host::compare(host::get(model, names.min_vertical_drains), Py_LE, value) &&
      host::compare(value, Py_LE, host::get(model, names.max_vertical_drains))) {
    return;
  }
  host::raise(state.toolkit.model_error.original(),
              host::text(message, {value, host::get(model, names.min_vertical_drains),
                                   host::get(model, names.max_vertical_drains)}));
}

Ref check_drains(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  if (!host::is_true(host::get(self, names.has_vertical_drains))) return host::none();

  const Ref drain = host::get(self, names.vertical_drain);
  const Ref limits = host::get(self, names.limits);
  check_range(state, limits, host::get(drain, names.range_to),
              "Vertical drains 'range_to' ({}) must be between model limits ({} - {})");
  check_range(state, limits, host::get(drain, names.range_from),
              "Vertical drains 'range_from' ({}) must be between model limits ({} - {})");
  check_level(state, self, host::get(drain, names.bottom_position),
              "Vertical drains 'bottom_position' ({}) must be between top and bottom limits "
              "({} - {})");
  const Ref position = host::get(drain, names.position_drain);
  if (position.get() != Py_None) {
    check_level(state, self, position,
                "Vertical drains 'position_drain' ({}) must be between top and bottom limits "
                "({} - {})");
  }
  return host::none();
}

}  // namespace

constinit const host::Operation<State> validate = host::method<check_drains>(
    "_validate",
    "Check the finished model; runs before each generation of an input file.\n\n"
    "Here only vertical drains are held against the limits and the levels of the model; a model\n"
    "without drains passes.\n\n"
    "Raises ModelError for the first check that fails; the model stays as it is.");

}  // namespace dsettlement::soil
