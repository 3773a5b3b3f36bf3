// What the messenger is called, wherever somebody sees it.
#pragma once

namespace platform_windows::messenger {

inline constexpr const char* programName = "KRVWinPrBote";

}  // namespace platform_windows::messenger
