#include "messenger/messenger_settings.h"

#include "runtime/whole_number.h"
#include "settings/MRegistry.h"

namespace messenger {

namespace {

// More folders than a messenger is made for, so that a list always ends.
constexpr int mostFolders = 1000;

std::string keyOf(std::string_view name) {
    return std::string(settings::MRegistry::productKey) + "\\" + std::string(name);
}

std::string valueOf(platform::SettingsStore& store, std::string_view name) {
    return settings::MRegistry::GetRegistryValue(store, keyOf("Bote"), name, "");
}

template <typename Number>
Number within(const std::string& text, Number least, Number most, Number otherwise) {
    const auto number = runtime::wholeNumber<Number>(text);
    return number && *number >= least && *number <= most ? *number : otherwise;
}

std::string folderName(int number) { return "Ordner" + std::to_string(number); }

}  // namespace

MessengerSettings readSettings(platform::SettingsStore& store) {
    constexpr std::int64_t eightDays = 691'200;
    constexpr int leastPause = 50;
    constexpr int mostPause = 60'000;
    MessengerSettings settings;
    for (int number = 1; number <= mostFolders; ++number) {
        std::string folder = valueOf(store, folderName(number));
        if (folder.empty()) {
            break;
        }
        settings.folders.push_back(std::move(folder));
    }
    settings.oldestOrder = within<std::int64_t>(valueOf(store, "Alter"), 0, eightDays, settings.oldestOrder);
    settings.lookEvery = std::chrono::milliseconds(
        within<int>(valueOf(store, "Abfrage"), leastPause, mostPause, static_cast<int>(settings.lookEvery.count())));
    settings.trustsReports = valueOf(store, "Ereignisse") != "0";
    settings.program = valueOf(store, "Programm");
    return settings;
}

bool storeFolders(platform::SettingsStore& store, const std::vector<std::string>& folders) {
    const auto set = [&store](int number, const std::string& folder) {
        settings::MRegistry::SetRegistryValue(store, keyOf("Bote"), folderName(number), folder,
                                              settings::MRegistry::noDefault);
    };
    int number = 0;
    for (const std::string& folder : folders) {
        set(++number, folder);
    }
    while (++number <= mostFolders && !valueOf(store, folderName(number)).empty()) {
        set(number, "");
    }
    return store.commit();
}

}  // namespace messenger
