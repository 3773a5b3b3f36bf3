#include "settings/window_place.h"

#include <array>

#include "runtime/whole_number.h"
#include "settings/MRegistry.h"

namespace settings {

namespace {

struct Row {
    const char* name;
    int platform::WindowPlace::*member;
};
constexpr std::array rows = {
    Row{"Links", &platform::WindowPlace::x},
    Row{"Oben", &platform::WindowPlace::y},
    Row{"Breite", &platform::WindowPlace::width},
    Row{"Hoehe", &platform::WindowPlace::height},
};
constexpr const char* maximized = "Maximiert";

}  // namespace

std::string formKey(const std::string& form) { return std::string(MRegistry::productKey) + "\\" + form; }

std::optional<platform::WindowPlace> readWindowPlace(session::Session& session, const std::string& form) {
    // Beyond any desktop, so that no sum of them is beyond an int.
    constexpr int most = 100000;
    constexpr int leastSide = 100;
    platform::SettingsStore& store = session.platform.settings;
    const std::string key = formKey(form);
    platform::WindowPlace place;
    for (const Row& row : rows) {
        const auto number = runtime::wholeNumber<int>(MRegistry::GetRegistryValue(store, key, row.name, ""));
        if (!number || *number > most || *number < -most) {
            return std::nullopt;
        }
        place.*row.member = *number;
    }
    if (place.width < leastSide || place.height < leastSide) {
        return std::nullopt;
    }
    place.maximized = MRegistry::GetRegistryValue(store, key, maximized, "0") == "1";
    return place;
}

void keepWindowPlace(session::Session& session, const std::string& form, const platform::WindowPlace& place) {
    if (place.width <= 0 || place.height <= 0) {
        return;
    }
    const auto store = [&](const char* name, const std::string& text) {
        MRegistry::SetRegistryValue(session.platform.settings, formKey(form), name, text, MRegistry::noDefault);
    };
    for (const Row& row : rows) {
        store(row.name, std::to_string(place.*row.member));
    }
    store(maximized, place.maximized ? "1" : "0");
}

}  // namespace settings
