// Text that the C library allocated.
#pragma once

#include <cstdlib>
#include <memory>

namespace platform_linux {

struct FreeCString {
    void operator()(char* text) const { std::free(text); }
};
using CString = std::unique_ptr<char, FreeCString>;

}  // namespace platform_linux
