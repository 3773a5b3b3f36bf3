// Pictures by the system's decoders.
#pragma once

#include <string_view>

#include "platform/windows/wic_factory.h"

namespace platform_windows {

// The first frame, of the size that inspectForeignPicture() has found. The content is borrowed.
ComObject<IWICBitmapFrameDecode> openWicFrame(const WicFactory& factory, const pictures::ForeignPicture& file,
                                              std::string_view content, const WicCheck& check);

// The first picture in the content of a file, of which inspectForeignPicture() has found this; as the file stores it.
// Throws what WicCheck throws.
platform::Picture decodeByWic(const WicFactory& factory, const pictures::ForeignPicture& file,
                              std::string_view content);

}  // namespace platform_windows
