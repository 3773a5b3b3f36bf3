#include "preview/vorschau_settings.h"

#include <array>
#include <string>
#include <string_view>

#include "runtime/whole_number.h"
#include "settings/MRegistry.h"

namespace preview {

namespace {

namespace MRegistry = settings::MRegistry;

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
constexpr const char* zoomName = "Zoom";

std::string key() { return std::string(MRegistry::productKey) + "\\Vorschau"; }

std::optional<platform::WindowPlace> readWindow(platform::SettingsStore& store) {
    // Beyond any desktop, so that no sum of them is beyond an int.
    constexpr int most = 100000;
    constexpr int leastSide = 100;
    platform::WindowPlace place;
    for (const Row& row : rows) {
        const auto number = runtime::wholeNumber<int>(MRegistry::GetRegistryValue(store, key(), row.name, ""));
        if (!number || *number > most || *number < -most) {
            return std::nullopt;
        }
        place.*row.member = *number;
    }
    if (place.width < leastSide || place.height < leastSide) {
        return std::nullopt;
    }
    place.maximized = MRegistry::GetRegistryValue(store, key(), maximized, "0") == "1";
    return place;
}

}  // namespace

KeptView readKeptView(session::Session& session) {
    platform::SettingsStore& store = session.platform.settings;
    const auto zoom = zoomOf(MRegistry::GetRegistryValue(store, key(), zoomName, ""), session.locale());
    return {zoom.value_or(Zoom()), readWindow(store)};
}

void storeKeptView(session::Session& session, const Zoom& zoom, const platform::WindowPlace& window) {
    const auto store = [&](const char* name, const std::string& text) {
        MRegistry::SetRegistryValue(session.platform.settings, key(), name, text, MRegistry::noDefault);
    };
    store(zoomName, zoomText(zoom, session.locale()));
    if (window.width > 0 && window.height > 0) {
        for (const Row& row : rows) {
            store(row.name, std::to_string(window.*row.member));
        }
        store(maximized, window.maximized ? "1" : "0");
    }
    session.storeSettings();
}

}  // namespace preview
