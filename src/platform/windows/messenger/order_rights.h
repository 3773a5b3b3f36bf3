// Who may leave orders in a folder.
#pragma once

#include <windows.h>

namespace platform_windows::messenger {

// Whether whoever owns the file, open for reading, is the user, the system or its administrators, the folder's owner,
// or somebody who may make files in the folder (a native path). True where the system does not tell.
bool ownerMayUseFolder(HANDLE file, const wchar_t* folder);

}  // namespace platform_windows::messenger
