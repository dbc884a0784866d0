// Attributes whose use from outside is noticed.
#pragma once

#include "host/module.hpp"
#include "host/name.hpp"

namespace dsettlement::host {

// Is told of each use of a watched attribute: `object` is the one that it belongs to.
using Notice = void (*)(void* state, Handle object);

// An attribute that stands in the object's own dictionary, under its name, as any other. But
// reading it hands out a container that the reader may change, and writing it puts something else
// there; so whoever keeps an index of what is in it wants to know of both.
class WatchedField {
 public:
  WatchedField(Module& module, const char* name) : name_(name), descriptor_(module) {}

  // Makes the descriptor that has to stand in the class under the name.
  template <typename State, void (*notice)(State&, Handle)>
  [[nodiscard]] Handle watch(Handle field_type, Handle module, State& state) {
    return watch_with(field_type, module, &state,
                      [](void* to, Handle object) { notice(*static_cast<State*>(to), object); });
  }

  // What stands in the object, without notice to anybody. Empty if nothing does, or if that is not
  // what the attribute is: the class of the object may have something else under the name, or its
  // own way to attributes.
  [[nodiscard]] Ref peek(Handle object) const;

  // What the attribute is, for a reader that neither changes it nor hands it on.
  [[nodiscard]] Ref read(Handle object) const;

  // Puts a value there as the attribute would, but without notice if there was none before. For an
  // object whose class is known to have nothing else under the name.
  void initialize(Handle object, Handle value) const;

  [[nodiscard]] Handle name() const noexcept { return name_; }

 private:
  Handle watch_with(Handle field_type, Handle module, void* state, Notice notice);

  Name name_;
  Slot descriptor_;
};

// Makes the type of the descriptors of one module.
[[nodiscard]] Ref make_watched_field_type(Handle module);

}  // namespace dsettlement::host
