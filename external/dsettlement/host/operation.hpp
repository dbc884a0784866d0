// An operation of a class as constant data: what it is called, what it takes, what it does.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "host/object.hpp"
#include "host/parameter.hpp"

namespace dsettlement::host {

// The bound arguments, one per parameter in declared order (`self` first); borrowed from the call.
class Arguments {
 public:
  explicit Arguments(PyObject* const* values) : values_(values) {}

  Handle operator[](std::size_t index) const { return values_[index]; }

  // The first `count` arguments, for a structured binding that names them.
  template <std::size_t count>
  [[nodiscard]] std::array<PyObject*, count> first() const {
    std::array<PyObject*, count> values{};
    for (std::size_t i = 0; i < count; ++i) values[i] = values_[i];
    return values;
  }

 private:
  PyObject* const* values_;
};

enum class Role : std::uint8_t { method, property, class_method };

// What stands behind an operation once types are gone: `state` is the state that its body works on.
using Entry = PyObject* (*)(void* state, Arguments arguments) noexcept;

struct Description {
  const char* name;
  std::span<const Parameter> parameters;
  const char* documentation;
  Entry entry;
  Role role = Role::method;
  bool is_abstract = false;
  const char* result = "None";
};

// A description that remembers which state its body needs, so that a class can only be given the
// right one.
template <typename State>
struct Operation : Description {
  [[nodiscard]] constexpr Operation abstract() const {
    Operation copy = *this;
    copy.is_abstract = true;
    return copy;
  }
  // Declares the type of the result, as an annotation would.
  [[nodiscard]] constexpr Operation returning(const char* type) const {
    Operation copy = *this;
    copy.result = type;
    return copy;
  }
};

namespace detail {

template <typename Body>
struct StateOf;
template <typename State>
struct StateOf<Ref (*)(State&, Arguments)> {
  using type = State;
};
template <auto body>
using state_of = StateOf<decltype(body)>::type;

template <auto body>
PyObject* enter(void* state, Arguments arguments) noexcept {
  return guard([&] { return body(*static_cast<state_of<body>*>(state), arguments); });
}

inline constexpr std::array only_self{self};

}  // namespace detail

template <auto body>
constexpr Operation<detail::state_of<body>> method(const char* name,
                                                   std::span<const Parameter> parameters,
                                                   const char* documentation) {
  return {{name, parameters, documentation, &detail::enter<body>}};
}

// A method that takes nothing but its object.
template <auto body>
constexpr Operation<detail::state_of<body>> method(const char* name, const char* documentation) {
  return method<body>(name, detail::only_self, documentation);
}

template <auto body>
constexpr Operation<detail::state_of<body>> class_method(const char* name,
                                                         std::span<const Parameter> parameters,
                                                         const char* documentation) {
  return {{name, parameters, documentation, &detail::enter<body>, Role::class_method}};
}

// A read-only property.
template <auto body>
constexpr Operation<detail::state_of<body>> property(const char* name, const char* documentation) {
  return {{name, detail::only_self, documentation, &detail::enter<body>, Role::property}};
}

namespace detail {

template <typename State, auto name>
Ref get_field(State& state, Arguments arguments) {
  return get(arguments[0], state.names.*name);
}

}  // namespace detail

// A read-only property that gives what another attribute is; `name` is a member of State::Names.
template <typename State, auto name>
constexpr Operation<State> getter(const char* property_name, const char* documentation) {
  return property<detail::get_field<State, name>>(property_name, documentation);
}

}  // namespace dsettlement::host
