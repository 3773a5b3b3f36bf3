#include "platform/windows/places.h"

#include <windows.h>

#include "platform/windows/wide_text.h"
#include "platform/windows/windows_settings_store.h"

namespace platform_windows {

std::wstring programFile() {
    // The function cuts off what does not fit and does not say how much that was.
    constexpr std::size_t longest = 32768;
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = ::GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    if (length >= MAX_PATH) {
        path.resize(longest);
        length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(longest));
    }
    path.resize(length);
    return path;
}

std::wstring systemFolder() {
    std::wstring folder(MAX_PATH, L'\0');
    const UINT length = ::GetSystemDirectoryW(folder.data(), MAX_PATH);
    folder.resize(length < MAX_PATH ? length : 0);
    return folder.empty() ? folder : folder + L'\\';
}

std::wstring localData() {
    constexpr const wchar_t* variable = L"LOCALAPPDATA";
    std::wstring folder(::GetEnvironmentVariableW(variable, nullptr, 0), L'\0');
    folder.resize(::GetEnvironmentVariableW(variable, folder.data(), static_cast<DWORD>(folder.size())));
    if (!folder.empty()) {
        return folder;
    }
    // Windows XP has no such variable, and a DOS host's environment may have no room for it.
    const auto value = WindowsSettingsStore().value(
        platform::SettingsRoot::currentUser, R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)",
        "Local AppData");
    const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
    return text != nullptr ? widen(*text) : std::wstring();
}

}  // namespace platform_windows
