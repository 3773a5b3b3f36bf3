// What red, green and blue of a document mean: an ICC profile of the colour space sRGB.
#pragma once

#include <string_view>

namespace platform_linux::pdf {

// A monitor profile of some 500 bytes (ICC.1:2004-10, version 4.2) by the formulas of IEC 61966-2-1.
std::string_view srgbProfile();

}  // namespace platform_linux::pdf
