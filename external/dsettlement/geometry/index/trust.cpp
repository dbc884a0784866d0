#include "geometry/index/trust.hpp"

#include "geometry/index/plain.hpp"
#include "host/internals.hpp"

namespace dsettlement::geometry {

using host::Handle;
using host::Ref;

bool are_classes_as_made(const State& state) {
  return state.point.is_as_made() && state.curve.is_as_made() && state.curve_list.is_as_made() &&
         state.pl_line.is_as_made() && state.boundary.is_as_made() && state.layer.is_as_made() &&
         state.model.vertical.is_unchanged();
}

bool is_model_as_made(const State& state, Handle model) {
  if (!state.model_members.are_those_of(model)) return false;
  // An operation, unlike a property or a watched list, can also be put into the object itself.
  const Ref attributes = host::own_attributes(model);
  return !host::value_in(attributes, state.names.private_create_curves) &&
         !host::value_in(attributes, state.names.private_create_curve);
}

Stamp stamp_of(const State& state, Handle model, std::uint64_t looks) {
  return {state.changes().count(), looks, host::version_of(host::class_of(model))};
}

bool is_reached_by_model_alone(Handle model) {
  return host::has_one_other_owner(host::own_attributes(model));
}

bool is_reached_by_model_alone(const Ref& list) {
  return host::has_one_other_owner(list);
}

bool is_reached_by_chain_alone(const State& state, Handle chain) {
  const bool has_its_attributes = host::has_one_other_owner(host::own_attributes(chain));
  const Ref curves = curves_of_plain_chain(state, chain);
  return has_its_attributes && curves && host::has_one_other_owner(curves);
}

}  // namespace dsettlement::geometry
