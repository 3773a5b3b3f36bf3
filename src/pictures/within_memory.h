// Pictures that the memory is too small for.
#pragma once

#include <new>
#include <stdexcept>

#include "runtime/error.h"

namespace pictures {

// The result of some work on a picture; what memory does not suffice for is errOutOfMemory with what to do.
template <typename Work>
auto withinMemory(const Work& work) {
    constexpr const char* detail = "Das Bild ist größer als der freie Speicher. Bitte das Bild verkleinern.";
    try {
        return work();
    } catch (const std::bad_alloc&) {
        throw runtime::Error(runtime::errOutOfMemory, detail);
    } catch (const std::length_error&) {
        throw runtime::Error(runtime::errOutOfMemory, detail);
    }
}

}  // namespace pictures
