// Pictures by the system's decoders.
#pragma once

#include <string_view>

#include "platform/windows/wic_factory.h"

namespace platform_windows {

// The first picture in the content of a file, of which inspectForeignPicture() has found this; without the resolution.
// Throws what WicCheck throws.
platform::Picture decodeByWic(const WicFactory& factory, const pictures::ForeignPicture& file,
                              std::string_view content);

}  // namespace platform_windows
