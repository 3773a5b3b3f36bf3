// Calls of libraries in C that leave by longjmp() when something is wrong.
#pragma once

#include <csetjmp>

namespace platform_linux::images {

// Runs the step; false where it was left by a jump. The step must own nothing that has a destructor, and nothing that
// it changes may be a local variable of its caller that the caller still needs after a jump.
template <typename Step>
bool completes(std::jmp_buf& jump, const Step& step) {
    if (setjmp(jump) != 0) {
        return false;
    }
    step();
    return true;
}

}  // namespace platform_linux::images
