// What the tests of the Windows adapter share.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <utility>

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

// Runs the work beside the test; its end is waited for. The compiler's 32-bit variant has no threads of the language.
class Thread {
public:
    explicit Thread(std::function<void()> work)
        : work_(std::move(work)), handle_(::CreateThread(nullptr, 0, run, &work_, 0, nullptr)) {}
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    ~Thread() { ::WaitForSingleObject(handle_.get(), INFINITE); }

private:
    static DWORD WINAPI run(void* work) {
        (*static_cast<std::function<void()>*>(work))();
        return 0;
    }

    std::function<void()> work_;
    platform_windows::KernelHandle handle_;
};

inline bool onWine() { return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace windows_support
