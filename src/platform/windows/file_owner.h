// Whose a file is.
#pragma once

#include <string>

namespace platform_windows {

// Whether the file of that native path belongs to the user, or to the group that what he makes as an administrator
// belongs to. Files without an owner are everybody's.
bool isUsersOwn(const std::wstring& path);

}  // namespace platform_windows
