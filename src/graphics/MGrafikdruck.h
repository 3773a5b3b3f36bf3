// Prints a single picture file, as large as the page allows.
#pragma once

#include <string>

#include "session/session.h"

namespace graphics::MGrafikdruck {

struct PixelSize {
    int width = 0;
    int height = 0;

    bool operator==(const PixelSize&) const = default;
};

// The largest size of a picture on a page, its proportions kept; each side has at least one pixel.
PixelSize fit(const PixelSize& picture, const PixelSize& page);

// Prints the picture at the origin of a page of its own. sDruckerTreiber: the printer's device name in any case, or
// empty for the default printer, which an unknown name means too. Without any printer the user is told and nothing
// happens. Failures are runtime::Error; nothing is printed then.
void PrintGraphic(session::Session& session, const std::string& sDateiname, const std::string& sDruckerTreiber);

}  // namespace graphics::MGrafikdruck
