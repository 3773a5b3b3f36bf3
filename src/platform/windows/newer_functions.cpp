#include "platform/windows/newer_functions.h"

#include "platform/windows/system_library.h"

namespace platform_windows {

namespace {

// The library is part of every process.
template <typename Function>
Function kernelFunction(const char* name) noexcept {
    return functionOf<Function>(::GetModuleHandleW(L"kernel32.dll"), name);
}

}  // namespace

std::uint64_t evenMilliseconds() noexcept {
    static const auto newer = kernelFunction<ULONGLONG(WINAPI*)()>("GetTickCount64");
    static const DWORD first = ::GetTickCount();
    // The older counter begins again at 0; the time since the first question does not.
    return newer != nullptr ? newer() : DWORD{::GetTickCount() - first};
}

bool isSameName(std::wstring_view one, std::wstring_view other) noexcept {
    using Compare = int(WINAPI*)(const wchar_t*, int, const wchar_t*, int, BOOL);
    static const auto newer = kernelFunction<Compare>("CompareStringOrdinal");
    const auto length = static_cast<int>(one.size());
    const auto otherLength = static_cast<int>(other.size());
    const int result = newer != nullptr ? newer(one.data(), length, other.data(), otherLength, TRUE)
                                        : ::CompareStringW(LOCALE_INVARIANT, NORM_IGNORECASE, one.data(), length,
                                                           other.data(), otherLength);
    return result == CSTR_EQUAL;
}

std::wstring finalPath(HANDLE file) {
    using Ask = DWORD(WINAPI*)(HANDLE, wchar_t*, DWORD, DWORD);
    constexpr DWORD normalized = 0;
    static const auto newer = kernelFunction<Ask>("GetFinalPathNameByHandleW");
    if (newer == nullptr) {
        return {};
    }
    std::wstring name(newer(file, nullptr, 0, normalized), L'\0');
    const DWORD length = newer(file, name.data(), static_cast<DWORD>(name.size()), normalized);
    name.resize(length < name.size() ? length : 0);
    return name;
}

void guaranteeStack(ULONG bytes) noexcept {
    if (const auto newer = kernelFunction<BOOL(WINAPI*)(ULONG*)>("SetThreadStackGuarantee"); newer != nullptr) {
        newer(&bytes);
    }
}

void letExceptionsLeaveCallbacks() noexcept {
    constexpr DWORD keepThem = 1;
    const auto get = kernelFunction<BOOL(WINAPI*)(DWORD*)>("GetProcessUserModeExceptionPolicy");
    const auto set = kernelFunction<BOOL(WINAPI*)(DWORD)>("SetProcessUserModeExceptionPolicy");
    DWORD policy = 0;
    if (get != nullptr && set != nullptr && get(&policy) != 0) {
        set(policy & ~keepThem);
    }
}

}  // namespace platform_windows
