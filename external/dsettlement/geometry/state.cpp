#include "geometry/state.hpp"

#include "host/object.hpp"

namespace dsettlement::geometry {

bool runs_assertions() {
  return !host::is_true(host::get(host::import("sys", "flags"), host::Name("optimize")));
}

host::Ref make_key(const char* operation, host::Handle name) {
  return host::call(host::import("operator", operation), name);
}

}  // namespace dsettlement::geometry
