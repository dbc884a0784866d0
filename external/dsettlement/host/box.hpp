// A C++ object that lives inside a Python object.
#pragma once

#include <memory>

#include "host/module.hpp"

namespace dsettlement::host {

// What a box holds. It says which references it owns, so that the garbage collector sees them.
class Content {
 public:
  Content() = default;
  Content(const Content&) = delete;
  Content& operator=(const Content&) = delete;
  virtual ~Content() = default;

  virtual int traverse(visitproc visit, void* argument) const = 0;
  // Lets go of all references.
  virtual void clear() noexcept = 0;
};

// Makes the type of the boxes of one module.
[[nodiscard]] Ref make_box_type(Handle module);

[[nodiscard]] Ref make_box(Handle box_type, std::unique_ptr<Content> content);

// What a box holds, or null for an object that is no box.
[[nodiscard]] Content* content_of(Handle object) noexcept;

}  // namespace dsettlement::host
