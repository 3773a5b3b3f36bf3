// DOS code pages.
#pragma once

#include <array>

namespace platform_linux {

using CodePage = std::array<char32_t, 256>;

// The characters of a DOS code page (437, 850, 858, 852, ...), the codes 1 to 31 and 127 as the glyphs that DOS showed
// for them. A code page that the system does not know falls back to 850.
CodePage dosCodePage(int number);

}  // namespace platform_linux
