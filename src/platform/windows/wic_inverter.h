// Picture files with the opposite colours, by the system's codecs.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/wic_factory.h"

namespace platform_windows {

// The file, of which inspectForeignPicture() has found this, as platform::ImageFiles::inverted() has it. Throws what
// WicCheck throws; what the system would not keep is refused.
std::string invertByWic(const WicFactory& factory, const pictures::ForeignPicture& file, std::string_view content);

}  // namespace platform_windows
