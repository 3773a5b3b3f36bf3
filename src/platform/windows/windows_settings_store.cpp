#include "platform/windows/windows_settings_store.h"

#include <windows.h>

#include "platform/windows/handle.h"
#include "platform/windows/wide_text.h"

namespace platform_windows {

namespace {

using platform::SettingsRoot;
using platform::SettingsValue;

constexpr REGSAM access =
    KEY_QUERY_VALUE | KEY_SET_VALUE | KEY_CREATE_SUB_KEY | KEY_ENUMERATE_SUB_KEYS | KEY_NOTIFY | KEY_CREATE_LINK;
static_assert(access == 0x3F);

// The predefined handles are negative numbers of 32 bits, whatever the width of a pointer.
HKEY rootKey(SettingsRoot root) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): that is what these handles are
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(static_cast<std::uint32_t>(root))));
}

RegistryKey openKey(SettingsRoot root, std::string_view key) {
    RegistryKey opened;
    if (::RegOpenKeyExW(rootKey(root), widen(key).c_str(), 0, access, opened.receive()) != ERROR_SUCCESS) {
        return {};
    }
    return opened;
}

std::optional<SettingsValue> textOf(HKEY key, const std::wstring& name, DWORD size) {
    // Somebody may make it longer between the two queries.
    std::wstring text;
    DWORD type = REG_NONE;
    LSTATUS status = ERROR_MORE_DATA;
    while (status == ERROR_MORE_DATA) {
        text.assign(size / sizeof(wchar_t) + 1, L'\0');
        size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = ::RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
    }
    if (status != ERROR_SUCCESS || type != REG_SZ) {
        return std::nullopt;
    }
    text.resize(size / sizeof(wchar_t));
    return narrow(std::wstring_view(text).substr(0, text.find(L'\0')));
}

std::optional<SettingsValue> numberOf(HKEY key, const std::wstring& name) {
    DWORD number = 0;
    DWORD size = sizeof(number);
    DWORD type = REG_NONE;
    const LSTATUS status =
        ::RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(&number), &size);
    const bool valid = status == ERROR_SUCCESS && type == REG_DWORD && size == sizeof(number);
    return valid ? std::optional<SettingsValue>(std::uint32_t{number}) : std::nullopt;
}

}  // namespace

bool WindowsSettingsStore::keyExists(SettingsRoot root, std::string_view key) {
    return static_cast<bool>(openKey(root, key));
}

std::optional<SettingsValue> WindowsSettingsStore::value(SettingsRoot root, std::string_view key,
                                                         std::string_view name) {
    const RegistryKey opened = openKey(root, key);
    const std::wstring wideName = widen(name);
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (!opened ||
        ::RegQueryValueExW(opened.get(), wideName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    switch (type) {
        case REG_SZ:
            return textOf(opened.get(), wideName, size);
        case REG_DWORD:
            return numberOf(opened.get(), wideName);
        default:
            return std::nullopt;
    }
}

bool WindowsSettingsStore::setText(SettingsRoot root, std::string_view key, std::string_view name,
                                   std::string_view text) {
    RegistryKey created;
    if (::RegCreateKeyExW(rootKey(root), widen(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, access, nullptr,
                          created.receive(), nullptr) != ERROR_SUCCESS) {
        failed_ = true;
        return false;
    }
    const std::wstring wideText = widen(text);
    const auto size = static_cast<DWORD>((wideText.size() + 1) * sizeof(wchar_t));
    const bool set = ::RegSetValueExW(created.get(), widen(name).c_str(), 0, REG_SZ,
                                      reinterpret_cast<const BYTE*>(wideText.c_str()), size) == ERROR_SUCCESS;
    failed_ = failed_ || !set;
    return set;
}

}  // namespace platform_windows
