// A printer that takes any paper that has a number, in colour: 600 pixels per inch.
#pragma once

#include "platform/drawing/page_options.h"

namespace platform::drawing {

bool plainPrinterAccepts(PageOption option, int value);

// Of the sheet so many pixels stay white on all sides.
DeviceCapabilities plainSheet(const PageOptions& options, int margin);

}  // namespace platform::drawing
