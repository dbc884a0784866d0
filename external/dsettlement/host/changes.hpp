// Changes of objects after they were made.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "host/class_snapshot.hpp"
#include "host/name.hpp"
#include "host/operation.hpp"

namespace dsettlement::host {

// Records offer no way to change, but Python lets anybody write to any attribute. Each such change
// is counted, so that what was indexed by the values before is known to hold no longer.
struct Changes {
  std::uint64_t count = 0;
};

// Which attributes of a class are counted: these, with those by which an object changes as a whole,
// or any at all if none are named.
class CountedFields {
 public:
  CountedFields(Changes& changes, std::initializer_list<const char*> names);

  void note(Handle name);

 private:
  Changes& changes_;
  std::vector<Name> names_;
};

// The operations by which attributes are set and deleted, for a class whose changes are counted.
extern const Operation<CountedFields> set_attribute;
extern const Operation<CountedFields> delete_attribute;

// Sets a field in the constructor of a class that was made so: as any attribute, but the first
// value is no change.
void initialize(const ClassSnapshot& made, Handle object, Handle name, Handle value);

}  // namespace dsettlement::host
