// What the preview's status line says of a page.
#pragma once

#include <cstdint>
#include <string>

#include "platform/surface.h"
#include "runtime/locale.h"

namespace preview {

// "A4", "A5 quer", or the size in millimetres where the sheet has no name.
std::string paperText(int paperSize, const platform::DeviceCapabilities& device);

// "873 Byte", "12,5 KB", "3,1 MB".
std::string sizeText(std::uint64_t bytes, const runtime::Locale& locale);

}  // namespace preview
