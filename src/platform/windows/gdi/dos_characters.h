// The characters of the host's DOS code page.
#pragma once

#include <array>

namespace platform_windows::gdi {

using DosCharacters = std::array<wchar_t, 256>;

// Of the user's DOS code page, the control codes as the glyphs that DOS showed for them. 0 is a blank, and a byte that
// is no character by itself is U+FFFD.
DosCharacters dosCharacters();

}  // namespace platform_windows::gdi
