#include "platform/windows/gdi/typefaces.h"

#include <algorithm>

namespace platform_windows::gdi {

const Typeface& Typefaces::get(HDC device, const platform::FontRequest& request) {
    const auto known =
        std::find_if(known_.begin(), known_.end(), [&](const Typeface& typeface) { return typeface.isFor(request); });
    return known != known_.end() ? *known : known_.emplace_back(device, request, characters_, smoothing_);
}

}  // namespace platform_windows::gdi
