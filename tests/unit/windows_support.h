// What the tests of the Windows adapter share.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"
#include "runtime/error.h"

namespace windows_support {

using platform_windows::FileHandle;
using platform_windows::narrow;
using platform_windows::widen;

inline FileHandle openShared(const std::string& path, DWORD access, DWORD share, DWORD disposition) {
    return FileHandle(::CreateFileW(widen(path).c_str(), access, share, nullptr, disposition, 0, nullptr));
}

inline void put(const std::string& path, std::string_view content) {
    const FileHandle file = openShared(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    DWORD count = 0;
    ASSERT_NE(::WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr), 0) << path;
}

inline std::string get(const std::string& path) {
    constexpr DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const FileHandle file = openShared(path, GENERIC_READ, share, OPEN_EXISTING);
    std::string content(100'000, '\0');
    DWORD count = 0;
    EXPECT_NE(::ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &count, nullptr), 0) << path;
    content.resize(count);
    return content;
}

inline bool onWine() { return ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

// A folder of its own below the one for temporary files; removed with what lies in it, but for folders.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::wstring temporary(MAX_PATH, L'\0');
        temporary.resize(::GetTempPathW(MAX_PATH, temporary.data()));
        static int count = 0;
        path_ =
            narrow(temporary) + "krv-test-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++count);
        ::CreateDirectoryW(widen(path_).c_str(), nullptr);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        for (const std::string& name : names()) {
            ::SetFileAttributesW(widen(*this / name).c_str(), FILE_ATTRIBUTE_NORMAL);
            ::DeleteFileW(widen(*this / name).c_str());
            ::RemoveDirectoryW(widen(*this / name).c_str());
        }
        ::RemoveDirectoryW(widen(path_).c_str());
    }

    std::string operator/(std::string_view name) const { return path_ + "\\" + std::string(name); }
    std::set<std::string> names() const {
        std::set<std::string> result;
        WIN32_FIND_DATAW entry{};
        const HANDLE search = ::FindFirstFileW(widen(*this / "*").c_str(), &entry);
        for (BOOL more = TRUE; more != 0; more = ::FindNextFileW(search, &entry)) {
            result.insert(narrow(entry.cFileName));
        }
        ::FindClose(search);
        result.erase(".");
        result.erase("..");
        return result;
    }

private:
    std::string path_;
};

// Number of the run-time error that the function throws, 0 for none.
inline int errorOf(const std::function<void()>& function, std::string* detail = nullptr) {
    try {
        function();
        return 0;
    } catch (const runtime::Error& error) {
        if (detail != nullptr) {
            *detail = error.detail();
        }
        return error.number();
    }
}

}  // namespace windows_support
