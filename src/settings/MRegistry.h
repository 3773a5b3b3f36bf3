// The settings by key paths in one string: a root name ("HKCU"), a backslash, and the key below it.
#pragma once

#include <string>
#include <string_view>

#include "platform/settings_store.h"

namespace settings::MRegistry {

inline constexpr std::string_view productKey = R"(HKCU\Software\Velmora\KRVWinPr\3.0)";
inline constexpr std::string_view oldProductKey = R"(HKCU\Software\Velmora\KRVWinPr\2.0)";

// Default text for a value that is to be written whatever it is.
inline constexpr std::string_view noDefault = "NODEFAULTVALUESET";

// A printer's name as its keys have it: without the two backslashes that begin the name of a network printer.
std::string_view printerKeyName(std::string_view deviceName);

// The key of a printer below a product key, under its name as the system lists it, which is how the printer selection
// writes it. Of a network printer's name the store skips the backslashes that a job cuts.
std::string listedPrinterKey(std::string_view deviceName, std::string_view product = productKey);

// The key of a printer below a product key. Backslashes in the name open further keys; nothing is escaped.
std::string printerKey(std::string_view deviceName, std::string_view product = productKey);

// HKEY_CURRENT_USER or HKCU, HKEY_LOCAL_MACHINE or HKLM, HKEY_CLASSES_ROOT or HKCR, HKEY_USERS or HKU, in any case.
// Any other name is an error with the number 0x80046978 and the source "pGetPredefinedKey".
platform::SettingsRoot pGetPredefinedKey(std::string_view rootName);

// The value as text (a number as its decimal digits), or the default where key or value is missing, empty, of another
// type, or the path has no backslash behind its root.
std::string GetRegistryValue(platform::SettingsStore& store, std::string_view keyPath, std::string_view valueName,
                             std::string_view defaultText);

// Writes a text value, creating keys as needed; but a value that equals its default is not created. Failures are
// silent: the next read returns the default.
void SetRegistryValue(platform::SettingsStore& store, std::string_view keyPath, std::string_view valueName,
                      std::string_view text, std::string_view defaultText);

bool RegistryKeyExists(platform::SettingsStore& store, std::string_view keyPath);

bool RegistryValueExists(platform::SettingsStore& store, platform::SettingsRoot root, std::string_view key,
                         std::string_view valueName);

}  // namespace settings::MRegistry
