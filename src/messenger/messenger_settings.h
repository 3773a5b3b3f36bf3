// What the user has set for the messenger, below HKCU\Software\Velmora\KRVWinPr\3.0\Bote.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "platform/settings_store.h"

namespace messenger {

struct MessengerSettings {
    std::vector<std::string> folders;  // "Ordner1", "Ordner2", ... up to the first that is missing or empty
    std::int64_t oldestOrder = 600;    // "Alter": seconds that an order may have waited for a messenger; 0 to 8 days
    std::chrono::milliseconds lookEvery{1000};  // "Abfrage": between looks where nothing reports changes; 50 to 60,000
    bool trustsReports = true;  // "Ereignisse": whether what the system reports of folders is enough; not with 0
    std::string program;        // "Programm": instead of the KRVWinPr beside the messenger; empty for that
};

// Whatever is no number of its range is the default.
MessengerSettings readSettings(platform::SettingsStore& store);

// Replaces the list of folders; false where that is known to have failed.
bool storeFolders(platform::SettingsStore& store, const std::vector<std::string>& folders);

}  // namespace messenger
