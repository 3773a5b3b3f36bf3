// The fonts of the system that a document draws with.
#pragma once

#include <cstddef>
#include <list>

#include "platform/windows/gdi/gdi_handles.h"
#include "platform/windows/gdi/typeface.h"

namespace platform_windows::gdi {

struct FontKey {
    const Typeface* typeface = nullptr;
    int emHeight = 0;
    platform::drawing::Turn turn;
    platform::drawing::TextScale scale;

    bool operator==(const FontKey&) const = default;
};

// Keeps the fonts used last; a report switches among a few, and the system has room for a limited number.
class FontHandles {
public:
    // The font for a key on this device, good until two others have been asked for; none where the system has no room
    // for one.
    HFONT get(HDC device, const FontKey& key);

    // Gives all of them back; none may be selected.
    void clear() noexcept { entries_.clear(); }

private:
    struct Entry {
        FontKey key;
        Font font;
    };
    static constexpr std::size_t most = 24;

    std::list<Entry> entries_;  // the one used last in front
};

}  // namespace platform_windows::gdi
