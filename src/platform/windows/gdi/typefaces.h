// The typefaces that a surface has asked its device for.
#pragma once

#include <list>

#include "platform/windows/gdi/dos_characters.h"
#include "platform/windows/gdi/typeface.h"

namespace platform_windows::gdi {

// All that have been asked for stay where they are, as long as this lives.
class Typefaces {
public:
    explicit Typefaces(Smoothing smoothing = Smoothing::device) : smoothing_(smoothing) {}

    const Typeface& get(HDC device, const platform::FontRequest& request);

    const DosCharacters& characters() const noexcept { return characters_; }

private:
    Smoothing smoothing_;
    DosCharacters characters_ = dosCharacters();
    std::list<Typeface> known_;
};

}  // namespace platform_windows::gdi
