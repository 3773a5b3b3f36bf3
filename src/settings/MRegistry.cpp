#include "settings/MRegistry.h"

#include <optional>

#include "runtime/error.h"
#include "runtime/text.h"

namespace settings::MRegistry {

namespace {

using platform::SettingsRoot;
using platform::SettingsStore;

// Application error base plus 27000.
constexpr auto errUndefinedRoot = static_cast<std::int32_t>(0x80046978U);

struct KeyPath {
    SettingsRoot root;
    std::string_view key;
};

std::optional<KeyPath> split(std::string_view path) {
    if (path.starts_with('\\')) {
        path.remove_prefix(1);
    }
    const std::size_t separator = path.find('\\');
    if (separator == std::string_view::npos) {
        return std::nullopt;
    }
    return KeyPath{pGetPredefinedKey(path.substr(0, separator)), path.substr(separator + 1)};
}

std::string textOf(const platform::SettingsValue& value) {
    const auto* number = std::get_if<std::uint32_t>(&value);
    return number != nullptr ? std::to_string(static_cast<std::int32_t>(*number)) : std::get<std::string>(value);
}

}  // namespace

std::string_view printerKeyName(std::string_view deviceName) {
    return deviceName.starts_with(R"(\\)") ? deviceName.substr(2) : deviceName;
}

std::string listedPrinterKey(std::string_view deviceName, std::string_view product) {
    return std::string(product) + R"(\Drucker\)" + std::string(deviceName);
}

std::string printerKey(std::string_view deviceName, std::string_view product) {
    return listedPrinterKey(printerKeyName(deviceName), product);
}

SettingsRoot pGetPredefinedKey(std::string_view rootName) {
    const std::string name = runtime::upperCase(rootName);
    if (name == "HKEY_CURRENT_USER" || name == "HKCU") {
        return SettingsRoot::currentUser;
    }
    if (name == "HKEY_LOCAL_MACHINE" || name == "HKLM") {
        return SettingsRoot::localMachine;
    }
    if (name == "HKEY_CLASSES_ROOT" || name == "HKCR") {
        return SettingsRoot::classesRoot;
    }
    if (name == "HKEY_USERS" || name == "HKU") {
        return SettingsRoot::users;
    }
    throw runtime::Error(errUndefinedRoot, "pGetPredefinedKey", "not defined yet!" + std::string(rootName));
}

std::string GetRegistryValue(SettingsStore& store, std::string_view keyPath, std::string_view valueName,
                             std::string_view defaultText) {
    if (const auto path = split(keyPath)) {
        if (const auto value = store.value(path->root, path->key, valueName)) {
            if (std::string text = textOf(*value); !text.empty()) {
                return text;
            }
        }
    }
    return std::string(defaultText);
}

void SetRegistryValue(SettingsStore& store, std::string_view keyPath, std::string_view valueName, std::string_view text,
                      std::string_view defaultText) {
    const auto path = split(keyPath);
    if (path && (text != defaultText || RegistryValueExists(store, path->root, path->key, valueName))) {
        store.setText(path->root, path->key, valueName, text);
    }
}

bool RegistryKeyExists(SettingsStore& store, std::string_view keyPath) {
    const auto path = split(keyPath);
    return path && store.keyExists(path->root, path->key);
}

bool RegistryValueExists(SettingsStore& store, SettingsRoot root, std::string_view key, std::string_view valueName) {
    return store.value(root, key, valueName).has_value();
}

}  // namespace settings::MRegistry
