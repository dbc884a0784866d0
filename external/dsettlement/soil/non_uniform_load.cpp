#include "soil/non_uniform_load.hpp"

#include "host/class_body.hpp"
#include "host/elements.hpp"
#include "host/filled.hpp"
#include "host/sequence.hpp"
#include "host/text.hpp"
#include "host/unpack.hpp"
#include "soil/name_length.hpp"

namespace dsettlement::soil {

using host::Arguments;
using host::flag;
using host::Handle;
using host::number;
using host::Parameter;
using host::Ref;

namespace {

// The constructor and the operation of the model take the same.
constexpr Parameter parameters[] = {host::self,
                                    {"name", "str"},
                                    {"points", "list[tuple[float, float]]"},
                                    {"time", "int", number(0)},
                                    {"end_time", "int", number(0)},
                                    {"gamma_dry", "float", number(10.0)},
                                    {"gamma_wet", "float", number(10.0)},
                                    {"temporary", "bool", flag(false)}};

void check_ascending(const State& state, Handle points) {
  Py_ssize_t position = 0;
  for (const Ref& point : host::Elements(host::slice_from(points, 1))) {
    const Ref x = host::unpack<2>(point)[0];
    const Ref before = host::item(host::item(points, position++), 0);
    if (host::compare(x, Py_LT, before)) {
      state.toolkit.refuse("Points not monotonic ascending for x-coordinate: {}", {points});
    }
  }
}

Ref init(State& state, Arguments arguments) {
  const auto [self, name, points, time, end_time, gamma_dry, gamma_wet, temporary] =
      arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;
  if (host::compare(time, Py_GT, end_time)) {
    state.toolkit.refuse("time ({}) cannot exceed end_time ({}).", {time, end_time});
  }
  check_ascending(state, points);
  host::set(self, names.private_name, name);
  host::set(self, names.private_points, points);
  host::set(self, names.private_time, time);
  host::set(self, names.private_end_time, end_time);
  host::set(self, names.private_gamma_dry, gamma_dry);
  host::set(self, names.private_gamma_wet, gamma_wet);
  host::set(self, names.private_temporary, temporary);
  return host::none();
}

constexpr Parameter serialize_parameters[] = {host::self, {"name", "str"}};

Ref serialize(State& state, Arguments arguments) {
  const Handle self = arguments[0];
  const State::Names& names = state.names;
  return host::Mapping()
      .put(names.name, host::get(self, names.private_name))
      .put(names.points, host::get(self, names.private_points))
      .put(names.time, host::get(self, names.private_time))
      .put(names.end_time, host::get(self, names.private_end_time))
      .put(names.gamma_dry, host::get(self, names.private_gamma_dry))
      .put(names.gamma_wet, host::get(self, names.private_gamma_wet))
      .put(names.temporary, host::get(self, names.private_temporary))
      .done();
}

// The points of all loads of the model.
Ref points_in_loads(const State& state, Handle model) {
  const State::Names& names = state.names;
  Ref pairs = Ref::steal(PySet_New(nullptr));
  const Ref loads =
      host::call_method(host::get(model, names.private_non_uniform_loads), names.values);
  for (const Ref& load : host::Elements(loads)) {
    for (const Ref& point : host::Elements(host::get(load, names.points))) {
      host::check(PySet_Add(pairs.get(), point.get()));
    }
  }
  return pairs;
}

// The points of all boundaries of the model, as pairs.
Ref points_in_boundaries(const State& state, Handle model) {
  const State::Names& names = state.names;
  Ref pairs = Ref::steal(PySet_New(nullptr));
  for (const Ref& boundary : host::Elements(host::get(model, names.private_boundaries))) {
    for (const Ref& point : host::Elements(host::get(boundary, names.points))) {
      const Ref x = host::get(point, names.x);
      const Ref y = host::get(point, names.y);
      const Ref pair = Ref::steal(PyTuple_Pack(2, x.get(), y.get()));
      host::check(PySet_Add(pairs.get(), pair.get()));
    }
  }
  return pairs;
}

// The pairs on which a load of this model may begin and end. A union of two sets, and not one set
// that is filled twice: coordinates of an application can tell how often they are compared.
Ref snapping_points(const State& state, Handle model) {
  const Ref of_loads = points_in_loads(state, model);
  return Ref::steal(PyNumber_Or(of_loads.get(), points_in_boundaries(state, model).get()));
}

Ref create_non_uniform_load(State& state, Arguments arguments) {
  const auto [self, name, points, time, end_time, gamma_dry, gamma_wet, temporary] =
      arguments.first<std::size(parameters)>();
  const State::Names& names = state.names;

  if (const Py_ssize_t count = host::length(name); count > longest_name) {
    state.toolkit.refuse("Name of non-uniform load can be max {} characters long (is {} for {}).",
                         {host::integer(longest_name), host::integer(count), name});
  }
  if (host::contains(host::get(self, names.private_non_uniform_loads), name)) {
    state.toolkit.refuse("Non-uniform load with name '{}' already exists.", {name});
  }
  const Ref first = host::item(points, 0);
  const Ref last = host::item(points, -1);
  const Ref valid = snapping_points(state, self);
  if (!host::contains(valid, first)) {
    state.toolkit.refuse(
        R"(First point of non-uniform load {} is not in points or in points of non-uniform load.)",
        {first});
  }
  if (!host::contains(valid, last)) {
    state.toolkit.refuse(
        R"(Last point of non-uniform load {} is not in points or in points of non-uniform load.)",
        {last});
  }
  Ref load = host::call(state.non_uniform_load.now(), name, points, time, end_time, gamma_dry,
                        gamma_wet, temporary);
  const Ref loads = host::get(self, names.private_non_uniform_loads);
  host::check(PyObject_SetItem(loads.get(), name, load.get()));
  return load;
}

}  // namespace

void define_non_uniform_load(host::Module& module, State& state) {
  host::ClassBody body(
      module, "_NonUniformLoad",
      R"(A load by the weight of the soil between a polyline and what lies below it.

An initial load affects the initial stresses only and causes neither creep nor consolidation.)");
  body.add(state,
           host::method<init>("__init__", parameters,
                              R"(Check the times and the order of the points, and keep the values.

name: name of the load.
points: x-y coordinates of the load, from left to right [m]; the list is kept, not copied.
time: the moment the load is laid down [days]; -1 makes it an initial load.
end_time: the moment the load is removed [days], only for temporary loads.
gamma_dry: total unit weight above phreatic level [kN/m³].
gamma_wet: total unit weight below phreatic level [kN/m³].
temporary: whether the load is a temporary load.

Raises ModelError if time is greater than end_time, temporary or not, or if an x coordinate
is less than the one before it.)"));
  body.add(state, host::getter<State, &State::Names::private_points>(
                      "points", "x-y coordinates of the load, as the list given.")
                      .returning("list[tuple[float, float]]"));
  body.add(state,
           host::method<serialize>("_serialize", serialize_parameters,
                                   R"(Return the load's part of the document as a new mapping.

name: not used; the load knows its name.)")
               .returning("dict[str, Any]"));
  state.non_uniform_load = body.make({state.load.original()});
}

namespace {

constexpr auto documentation_of_create =
    host::filled(R"(Create a load by the weight of the soil below a polyline.

name: name of the load, at most {} characters; must be new among the non-uniform loads.
points: x-y coordinates from left to right [m]. The first and the last must each be a point
    of a boundary or of an earlier non-uniform load. The list is kept, not copied.
time: the moment the load is laid down [days]; -1 makes it an initial load.
end_time: the moment the load is removed [days], only for temporary loads; not before time,
    temporary or not.
gamma_dry: total unit weight above phreatic level [kN/m³].
gamma_wet: total unit weight below phreatic level [kN/m³].
temporary: whether the load is a temporary load.

Returns the new load.

Raises ModelError if the name is too long or exists already, if the first or the last point is
on no point of a boundary or load, if time is greater than end_time, or if an x coordinate is
less than the one before it; the model then stays as it is. Raises IndexError if there is no
point.)",
                 longest_name);

}  // namespace

void add_non_uniform_loads(host::ClassBody& body, State& state) {
  body.add(state, host::method<create_non_uniform_load>("create_non_uniform_load", parameters,
                                                        documentation_of_create)
                      .returning("_NonUniformLoad"));
}

}  // namespace dsettlement::soil
