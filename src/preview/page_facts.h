// What the preview's status line says of a page.
#pragma once

#include <string>

#include "platform/surface.h"

namespace preview {

// "A4", "A5 quer", or the size in millimetres where the sheet has no name.
std::string paperText(int paperSize, const platform::DeviceCapabilities& device);

}  // namespace preview
