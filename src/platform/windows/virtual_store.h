// Where User Account Control puts what programs write into a folder of the system that they have no rights in.
#pragma once

#include <string>

namespace platform_windows {

// The file that another program of this user has instead of the one with this native path; empty where there is none.
// This program itself never does: its manifest says that it knows User Account Control.
std::wstring redirectedFile(const std::wstring& path);

}  // namespace platform_windows
