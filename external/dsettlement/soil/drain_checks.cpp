#include "soil/drain_checks.hpp"

#include "host/containers.hpp"
#include "host/text.hpp"

namespace dsettlement::soil {

using host::Handle;
using host::Ref;

namespace {

constexpr double least_size = 0.001;
constexpr long largest_size = 1000;
constexpr long largest_time = 100000;
constexpr long largest_underpressure = 100000;

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
    demand(host::between(least_size, drain_.center_to_center, largest_size),
           "'center_to_center' must be between 0.001 and 1000 ({})", {drain_.center_to_center});
    demand(host::between(least_size, drain_.width_diameter, largest_size),
           "'width_diameter' must be between 0.001 and 1000 ({})", {drain_.width_diameter});
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
    if (!holds) host::raise(state_.toolkit.model_error.original(), host::text(message, values));
  }

  void check_shape() const {
    if (is_strip()) {
      demand(host::is_true(drain_.thickness),
             "'thickness' must be set for vertical drain of type '{}'", {drain_.drain_type});
      // The message shows the distance and not the thickness; callers know it so.
      demand(host::between(least_size, drain_.thickness, largest_size),
             "'thickness' must be between 0.001 and 1000 ({})", {drain_.center_to_center});
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
           "'start_of_drainage' must be between 0 and 100000 ({})", {drain_.start_of_drainage});
  }

  void check_simple_schedule() const {
    const State::Names& names = state_.names;
    check_of_schedule(names.begin_time, 0, largest_time,
                      "'schedule.begin_time' must be between {} and {} ({})");
    check_of_schedule(names.end_time, 0, largest_time,
                      "'schedule.end_time' must be between {} and {} ({})");
    check_of_schedule(names.underpressure, 0, largest_underpressure,
                      "'schedule.underpressure' must be between {} and {} ({})");
    const long limit = dewatering_limit(is_sand_wall());
    check_of_schedule(names.dewatering, -limit, limit,
                      "'schedule.dewatering_head_or_pressure' must be between {} and {} ({})");
  }

  void check_of_schedule(const host::Name& name, long lower, long upper,
                         const char* message) const {
    if (host::between(lower, host::get(drain_.schedule, name), upper)) return;
    demand(false, message,
           {host::integer(lower), host::integer(upper), host::get(drain_.schedule, name)});
  }

  void check_detailed_schedule() const {
    demand(all_entries_between(0, 0, largest_time),
           "First entry (time) of all entries in 'schedule' must be between 0 and 100000");
    demand(
        all_entries_between(1, 0, largest_underpressure),
        R"(Second entry (underpressure) of all entries in 'schedule' must be between 0 and 100000)");
    const bool has_tube = is_sand_wall();
    const long limit = dewatering_limit(has_tube);
    const Ref quantity =
        Ref::steal(PyUnicode_FromString(has_tube ? "tube pressure" : "water head"));
    demand(all_entries_between(2, -limit, limit),
           "Third entry ({}) of all entries in 'schedule' must be between {} and {}",
           {quantity, host::integer(-limit), host::integer(limit)});
  }

  [[nodiscard]] bool all_entries_between(Py_ssize_t place, long lower, long upper) const {
    bool all = true;
    host::for_each_while(drain_.schedule, [&](const Ref& entry) {
      all = host::between(lower, host::item(entry, place), upper);
      return all;
    });
    return all;
  }

  // A tube pressure [kPa] in a sand wall, a water head [m] in the others.
  static constexpr long dewatering_limit(bool has_tube) { return has_tube ? 10000 : 100000; }

  const State& state_;
  const DrainValues& drain_;
};

}  // namespace

void check_drain(const State& state, const DrainValues& drain) {
  Checks(state, drain).run();
}

}  // namespace dsettlement::soil
