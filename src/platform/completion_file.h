// The file for which the host waits: the program writes it into the current directory, and where it crashes, what
// reports that does.
#pragma once

#include <string_view>

namespace platform {

inline constexpr std::string_view completionFileName = "KRVWINPR.OK";
// ASCII, and so the same in every code page.
inline constexpr std::string_view completionFileText = "Alles OK, Korvano kann weitermachen!\r\n";

}  // namespace platform
