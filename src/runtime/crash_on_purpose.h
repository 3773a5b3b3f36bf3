// Crashes for those who work on the program, and for the tests of what becomes of them.
#pragma once

#include <string_view>

#include "runtime/program.h"

namespace runtime {

namespace development {
void crashWhereAsked(std::string_view place);
}

// In a development build: crashes where the environment variable KRVWINPR_CRASH says "<place>:<kind>". The kinds are
// "access", "abort", "overflow" (of the stack), "throw" (an exception that nobody can catch), "illegal" (instruction)
// and "error" (a run-time error). The program that users have never does it.
inline void crashOnPurpose(std::string_view place) {
    if constexpr (developmentBuild) {
        development::crashWhereAsked(place);
    }
}

}  // namespace runtime
