#include "preview/vorschau_settings.h"

#include "settings/MRegistry.h"
#include "settings/window_place.h"

namespace preview {

namespace {

namespace MRegistry = settings::MRegistry;

constexpr const char* form = "Vorschau";
constexpr const char* zoomName = "Zoom";
constexpr const char* folderName = "Ordner";

}  // namespace

KeptView readKeptView(session::Session& session) {
    const auto zoom =
        zoomOf(MRegistry::GetRegistryValue(session.platform.settings, settings::formKey(form), zoomName, ""),
               session.locale());
    return {zoom.value_or(Zoom()), settings::readWindowPlace(session, form)};
}

void storeKeptView(session::Session& session, const Zoom& zoom, const platform::WindowPlace& window) {
    MRegistry::SetRegistryValue(session.platform.settings, settings::formKey(form), zoomName,
                                zoomText(zoom, session.locale()), MRegistry::noDefault);
    settings::keepWindowPlace(session, form, window);
    session.storeSettings();
}

std::string readKeptFolder(session::Session& session) {
    return MRegistry::GetRegistryValue(session.platform.settings, settings::formKey(form), folderName, "");
}

void storeKeptFolder(session::Session& session, const std::string& folder) {
    MRegistry::SetRegistryValue(session.platform.settings, settings::formKey(form), folderName, folder,
                                MRegistry::noDefault);
}

}  // namespace preview
