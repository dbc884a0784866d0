#include "soil/drain_checks.hpp"

#include "host/elements.hpp"
#include "host/text.hpp"

namespace dsettlement::soil {

using host::Handle;
using host::Ref;

namespace {

class Checks {
 public:
  Checks(const State& state, const DrainValues& drain) : state_(state), drain_(drain) {}

  void run() const {
    check_shape();
    if (PyList_Check(drain_.schedule) == 0) {
      check_start();
      if (host::is_instance(drain_.schedule, state_.drainage_simple_mode.now())) {
        check_simple_schedule();
      }
    } else {
      check_detailed_schedule();
    }
    check_size("center_to_center", drain_.center_to_center, drain_.center_to_center);
    check_size("width_diameter", drain_.width_diameter, drain_.width_diameter);
  }

 private:
  // Asked anew for each rule, since the type may be any object with an equality of its own.
  [[nodiscard]] bool type_compares(int operation, const host::Name& member) const {
    const Ref type = host::get(state_.drain_type.now(), member);
    return host::compare(drain_.drain_type, operation, type);
  }
  [[nodiscard]] bool is_strip() const { return type_compares(Py_EQ, state_.names.strip); }
  [[nodiscard]] bool is_sand_wall() const { return type_compares(Py_EQ, state_.names.sand_wall); }

  void demand(bool holds, const char* message, std::initializer_list<Handle> values = {}) const {
    if (!holds) state_.toolkit.refuse(message, values);
  }

  void check_size(const char* name, Handle size, Handle shown) const {
    demand(host::between(least_size, size, largest_size), "'{}' must be between {} and {} ({})",
           {host::characters_of(name), host::real(least_size), host::integer(largest_size), shown});
  }

  void check_shape() const {
    if (is_strip()) {
      demand(host::is_true(drain_.thickness),
             "'thickness' must be set for vertical drain of type '{}'", {drain_.drain_type});
      // The message shows the distance and not the thickness; callers know it so.
      check_size("thickness", drain_.thickness, drain_.center_to_center);
    }
    if (is_sand_wall()) {
      demand(!host::is_true(drain_.schedule) || drain_.position_drain != Py_None,
             "'position_drain' must be set for vertical drain of type '{}' with schedule",
             {drain_.drain_type});
    }
    if (type_compares(Py_NE, state_.names.sand_wall)) {
      demand(host::is_true(drain_.grid), "'grid' must be set for vertical drain of type '{}'",
             {drain_.drain_type});
    }
  }

  void check_start() const {
    demand(
        drain_.start_of_drainage != Py_None && drain_.phreatic_level_in_drain != Py_None,
        R"('start_of_drainage' and 'phreatic_level_in_drain' must be set if drainage schedule is not of type 'List' (detailed input))");
    demand(host::between(0L, drain_.start_of_drainage, largest_time),
           "'start_of_drainage' must be between {} and {} ({})",
           {host::integer(0), host::integer(largest_time), drain_.start_of_drainage});
  }

  void check_simple_schedule() const {
    const State::Names& names = state_.names;
    check_of_schedule(names.begin_time, 0, largest_time);
    check_of_schedule(names.end_time, 0, largest_time);
    check_of_schedule(names.underpressure, 0, largest_underpressure);
    const long limit = dewatering_limit(is_sand_wall());
    check_of_schedule(names.dewatering, -limit, limit);
  }

  void check_of_schedule(const host::Name& name, long lower, long upper) const {
    if (host::between(lower, host::get(drain_.schedule, name), upper)) return;
    demand(false, "'schedule.{}' must be between {} and {} ({})",
           {name, host::integer(lower), host::integer(upper), host::get(drain_.schedule, name)});
  }

  void check_detailed_schedule() const {
    check_entries(0, "First entry (time)", 0, largest_time);
    check_entries(1, "Second entry (underpressure)", 0, largest_underpressure);
    const bool has_tube = is_sand_wall();
    const long limit = dewatering_limit(has_tube);
    check_entries(2, has_tube ? "Third entry (tube pressure)" : "Third entry (water head)", -limit,
                  limit);
  }

  void check_entries(Py_ssize_t place, const char* which, long lower, long upper) const {
    demand(all_entries_between(place, lower, upper),
           "{} of all entries in 'schedule' must be between {} and {}",
           {host::characters_of(which), host::integer(lower), host::integer(upper)});
  }

  [[nodiscard]] bool all_entries_between(Py_ssize_t place, long lower, long upper) const {
    for (const Ref& entry : host::Elements(drain_.schedule)) {
      if (!host::between(lower, host::item(entry, place), upper)) return false;
    }
    return true;
  }

  static constexpr long dewatering_limit(bool has_tube) {
    return has_tube ? largest_tube_pressure : largest_water_head;
  }

  const State& state_;
  const DrainValues& drain_;
};

}  // namespace

void check_drain(const State& state, const DrainValues& drain) {
  Checks(state, drain).run();
}

}  // namespace dsettlement::soil
