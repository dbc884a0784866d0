// The texts with which Python refuses a call that does not fit the signature.
#pragma once

#include <span>

#include "host/binding.hpp"

namespace dsettlement::host {

[[noreturn]] void refuse_keyword_that_is_no_text(Handle function);
[[noreturn]] void refuse_unexpected_keyword(Handle function, Handle keyword);
[[noreturn]] void refuse_second_value(Handle function, Handle parameter);
[[noreturn]] void refuse_surplus(Handle function, const Binding& binding, std::size_t given,
                                 std::span<PyObject* const> bound);
// Returns if every parameter in [begin, end) without a default has a value.
void refuse_missing(Handle function, const Binding& binding, std::span<PyObject* const> bound,
                    std::size_t begin, std::size_t end, const char* kind);

}  // namespace dsettlement::host
