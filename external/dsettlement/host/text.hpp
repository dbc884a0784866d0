// Messages.
#pragma once

#include <initializer_list>
#include <string_view>

#include "host/ref.hpp"

namespace dsettlement::host {

// The pattern with each {} replaced by the text form of the next value, as an f-string would.
[[nodiscard]] Ref text(std::string_view pattern, std::initializer_list<Handle> values);

}  // namespace dsettlement::host
