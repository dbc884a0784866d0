// Remembers that a model could not be registered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace dsettlement::geometry {

// Reading all of a model only to meet the same odd object again would cost more than it saves. So
// after a refusal the model is read again only once there is reason for hope: something was
// written, something was taken out, or twice as much is in it, of which the first reading is a
// small part then.
class Refusal {
 public:
  void remember(std::uint64_t changes, std::ptrdiff_t size) {
    is_known_ = true;
    changes_ = changes;
    size_ = size;
    last_size_ = size;
  }

  [[nodiscard]] bool stands(std::uint64_t changes, std::ptrdiff_t size) {
    const bool has_shrunk = size < std::exchange(last_size_, size);
    return is_known_ && changes == changes_ && !has_shrunk && size < 2 * size_ + 2;
  }

 private:
  bool is_known_ = false;
  std::uint64_t changes_ = 0;
  std::ptrdiff_t size_ = 0;       // when it was refused
  std::ptrdiff_t last_size_ = 0;  // when it was asked for last
};

}  // namespace dsettlement::geometry
