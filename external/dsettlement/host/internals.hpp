// What the interpreter knows and its public interface has no question for. Each thing that is asked
// has a name here, so that another release of Python has one page to look at.
#pragma once

#include <Python.h>

#include <string_view>

#include "host/ref.hpp"

namespace dsettlement::host {

[[nodiscard]] inline PyTypeObject* as_type(Handle type) noexcept {
  return reinterpret_cast<PyTypeObject*>(static_cast<PyObject*>(type));
}

[[nodiscard]] inline PyTypeObject* class_of(Handle object) noexcept {
  return Py_TYPE(static_cast<PyObject*>(object));
}

// What a class has under a name, itself or from a base, as it stands there; null for nothing. The
// class keeps it alive.
[[nodiscard]] PyObject* member_of(PyTypeObject* type, Handle name) noexcept;

// Whether the class leaves its objects' attributes to Python's own way of looking them up.
[[nodiscard]] bool has_default_lookup(PyTypeObject* type);

// The version of a class: each class has one of its own, and another one with every change. 0 if
// there is none to be had.
[[nodiscard]] unsigned int version_of(PyTypeObject* type) noexcept;

// Whether a class is still of a version that it once had.
[[nodiscard]] bool is_of_version(PyTypeObject* type, unsigned int version) noexcept;

// Gives a finished class a member, as the attributes of its objects or another descriptor.
void put_member(PyTypeObject* type, const char* name, Handle member);

// Whether the class of an object has that name and cannot be changed, since it is none that was
// made by running Python.
[[nodiscard]] bool is_of_fixed_class(Handle object, std::string_view name) noexcept;

// What an object has in a slot of its class, past what a derived class does with attributes; empty
// if nothing.
[[nodiscard]] Ref in_slot(Handle slot, Handle object);
void put_in_slot(Handle slot, Handle object, Handle value);

// What an object has under a name that its class has nothing under; empty if nothing.
[[nodiscard]] Ref own_attribute(Handle object, Handle name);

// The attributes of an object as the dictionary that they stand in, past what its class makes of
// `__dict__`.
[[nodiscard]] Ref own_attributes(Handle object);

// What a dictionary has under a key, or an empty Ref. Looking can run code, that of other keys'
// equality, which makes the owner of the dictionary let go of it; so that is owned by a Ref.
[[nodiscard]] Ref value_in(const Ref& dictionary, Handle key);

// Whether there is but one owner beside the caller.
[[nodiscard]] bool has_one_other_owner(const Ref& object) noexcept;

// Spares the garbage collector a tuple that can be part of no cycle. It would find that out by
// itself, at the cost of a few passes through everything there is.
void leave_to_its_count(Handle tuple) noexcept;

}  // namespace dsettlement::host
