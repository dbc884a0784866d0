// What a native function object is made of. Only the files that make up its type include this.
#pragma once

#include <Python.h>

#include "host/binding.hpp"
#include "host/operation.hpp"
#include "host/ref.hpp"

namespace dsettlement::host {

struct Function {
  PyObject_HEAD  // the macro brings its own semicolon
      vectorcallfunc vectorcall;
  PyObject* weak_references;
  PyObject* attributes;  // the __dict__, made when somebody sets an attribute
  // The state lives as long as the module does; both are let go together.
  Ref module;
  void* state;
  Description description;
  Ref name;
  Ref qualified_name;
  Ref documentation;
  Binding binding;
};

inline Function& as_function(PyObject* object) {
  return *reinterpret_cast<Function*>(object);
}

}  // namespace dsettlement::host
