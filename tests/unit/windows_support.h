// What the tests of the Windows adapter share.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"
#include "unit/support/adapter_test.h"

namespace windows_support {

using namespace support;
using platform_windows::FileHandle;
using platform_windows::narrow;
using platform_windows::widen;

inline FileHandle openShared(const std::string& path, DWORD access, DWORD share, DWORD disposition = OPEN_EXISTING) {
    return FileHandle(::CreateFileW(widen(path).c_str(), access, share, nullptr, disposition, 0, nullptr));
}

inline bool onWine() { return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace windows_support
