// What the preview keeps from call to call, below the product's key.
#pragma once

#include <optional>

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

}  // namespace preview
