// KRVWINPR.COM, which hosts inside an emulator call.
#pragma once

#include <string_view>

namespace messenger {

inline constexpr std::string_view hostProgramName = "KRVWINPR.COM";

// Its bytes.
std::string_view hostProgram();

}  // namespace messenger
