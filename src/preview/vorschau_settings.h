// What the preview keeps from call to call, below the product's key.
#pragma once

#include <optional>
#include <string>

#include "platform/form_design.h"
#include "preview/zoom.h"
#include "session/session.h"

namespace preview {

struct KeptView {
    Zoom zoom;
    std::optional<platform::WindowPlace> window;
};

// What cannot be used is as good as missing.
KeptView readKeptView(session::Session& session);

void storeKeptView(session::Session& session, const Zoom& zoom, const platform::WindowPlace& window);

// The folder of the file that the user has chosen last; empty where there is none.
std::string readKeptFolder(session::Session& session);
void storeKeptFolder(session::Session& session, const std::string& folder);

}  // namespace preview
