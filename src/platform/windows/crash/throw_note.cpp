// What the program calls instead of __cxa_throw(); the linker gives both their names (--wrap).
#include "platform/windows/crash/last_throw.h"

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the linker's
extern "C" {

[[noreturn]] void __real___cxa_throw(void* exception, void* type, void* destroy);

[[noreturn, gnu::noinline]] void __wrap___cxa_throw(void* exception, void* type, void* destroy) {
    platform_windows::crash::noteThrow(1);
    __real___cxa_throw(exception, type, destroy);
}
}
// NOLINTEND(bugprone-reserved-identifier)
