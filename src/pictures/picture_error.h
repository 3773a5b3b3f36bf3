// What is said about picture files that cannot be read.
#pragma once

#include <string_view>

namespace pictures {

// Throws errInvalidPicture with a German detail: "Die BMP-Datei" (the kind), what is wrong, and what to do. The fault
// is the rest of the sentence without its full stop.
[[noreturn]] void refusePicture(std::string_view kind, std::string_view fault);

}  // namespace pictures
