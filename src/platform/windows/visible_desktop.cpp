#include "platform/windows/visible_desktop.h"

#include <windows.h>

namespace platform_windows {

bool hasVisibleDesktop() noexcept {
    USEROBJECTFLAGS flags{};
    DWORD needed = 0;
    return ::GetUserObjectInformationW(::GetProcessWindowStation(), UOI_FLAGS, &flags, sizeof(flags), &needed) != 0 &&
           (flags.dwFlags & WSF_VISIBLE) != 0;
}

}  // namespace platform_windows
