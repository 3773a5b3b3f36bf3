#include "platform/windows/gdi/font_handles.h"

#include <algorithm>
#include <utility>

namespace platform_windows::gdi {

HFONT FontHandles::get(HDC device, const FontKey& key) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) { return entry.key == key; });
    if (found != entries_.end()) {
        entries_.splice(entries_.begin(), entries_, found);
        return entries_.front().font.get();
    }
    Font font = key.typeface->create(device, key.emHeight, key.turn, key.scale);
    if (!font) {
        return nullptr;
    }
    if (entries_.size() == most) {
        entries_.pop_back();
    }
    return entries_.emplace_front(Entry{key, std::move(font)}).font.get();
}

}  // namespace platform_windows::gdi
