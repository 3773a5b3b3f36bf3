// Whose a file is.
#pragma once

#include <string>

namespace platform_windows {

// Whether the file of that native path belongs to the user, or to the group that what he makes as an administrator
// belongs to. Files without an owner are everybody's.
bool isUsersOwn(const std::wstring& path);

// The same for who is the owner of something, a security identifier of the system.
bool isUser(void* owner);

}  // namespace platform_windows
