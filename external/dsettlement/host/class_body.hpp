// The description of a class, read from top to bottom like a class body in Python.
#pragma once

#include <initializer_list>

#include "host/containers.hpp"
#include "host/module.hpp"
#include "host/operation.hpp"

namespace dsettlement::host {

class ClassBody {
 public:
  ClassBody(Module& module, const char* name, const char* documentation);

  // Adds an operation whose body works on `state`.
  template <typename State>
  void add(State& state, const Operation<State>& operation) {
    add_operation(&state, operation);
  }

  // Adds a class attribute.
  void add(const char* name, Handle value);

  // Declares an attribute that each object gets from its constructor, as `name: type` would.
  void declare(const char* name, const char* type);

  // Makes the class by calling its metaclass: that of the first base, or `metaclass` where one is
  // given.
  [[nodiscard]] Ref make(std::initializer_list<Handle> bases = {});
  [[nodiscard]] Ref make_with(Handle metaclass, std::initializer_list<Handle> bases = {});

 private:
  void add_operation(void* state, const Description& description);

  Module& module_;
  Ref name_;
  Mapping members_;
  Mapping annotations_;
};

// A class of named values, made by enum.Enum itself.
struct Member {
  const char* name;
  int value;
};
[[nodiscard]] Ref make_enumeration(const Module& module, const char* name,
                                   const char* documentation,
                                   std::initializer_list<Member> members);

}  // namespace dsettlement::host
