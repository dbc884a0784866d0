// Lets C++ allocations fail on demand. A library that is loaded before all others, so that every
// `new` of the module comes here, of the module as it is shipped and of one built with sanitizers.

#include <dlfcn.h>

#include <cstddef>
#include <new>

namespace {

// The allocations from `first` on fail, those before `behind`, counted from when this was set.
struct Failures {
  long count = 0;
  long first = 0;
  long behind = 0;
};

thread_local Failures failures;

void* allocate(std::size_t size) {
  using Allocate = void* (*)(std::size_t);
  static const auto next = reinterpret_cast<Allocate>(dlsym(RTLD_NEXT, "_Znwm"));
  ++failures.count;
  if (failures.count >= failures.first && failures.count < failures.behind) throw std::bad_alloc();
  return next(size);
}

}  // namespace

extern "C" void fail_new(long first, long behind) {
  failures = {0, first, behind};
}

extern "C" long count_new() {
  return failures.count;
}

// The other forms of `new` that the standard library has for the module come down to this one.
void* operator new(std::size_t size) {
  return allocate(size);
}
