// The texts with which Python refuses a call that does not fit the signature.
#pragma once

#include <span>

#include "host/binding.hpp"

namespace dsettlement::host {

[[noreturn]] void refuse_keyword_that_is_no_text(Handle function);
[[noreturn]] void refuse_unexpected_keyword(Handle function, Handle keyword);
[[noreturn]] void refuse_second_value(Handle function, Handle parameter);
[[noreturn]] void refuse_surplus(Handle function, const Binding& binding, std::size_t count,
                                 const Binding::Given& by_keyword);
// The parameters that miss are those without a value in `bound`.
[[noreturn]] void refuse_missing(Handle function, const Binding& binding,
                                 std::span<PyObject* const> bound);

}  // namespace dsettlement::host
