// Errors of the system: their texts, and the run-time errors that they become.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace platform_windows {

// Published codes that the compiler's headers lack.
inline constexpr DWORD errorDirectoryNotSupported = 336;
inline constexpr DWORD errorDiskQuotaExceeded = 1295;
inline constexpr DWORD errorVirusInfected = 225;
inline constexpr DWORD errorVirusDeleted = 226;

// Whether it says that disk or share have no room for more.
bool isLackOfRoom(DWORD code) noexcept;

// The system's text for an error code in the user's language, in one line; empty where it has none.
std::string systemText(DWORD code);

// "Windows-Fehler 5: Zugriff verweigert"; the number alone where the system has no text for it.
std::string systemMessage(DWORD code);

// "Windows-Fehler 0x80040154", as the results of COM are looked up.
std::string codeOf(HRESULT result);
bool isOutOfMemory(HRESULT result);

// Throws the run-time error that a failed call on a file means: path, what to do, and the system's message. A code that
// has no meaning of its own here is errDeviceIo. Whoever knows better what to do than the code tells says it.
[[noreturn]] void throwFileError(DWORD code, const std::string& path, std::string_view remedy = {});

}  // namespace platform_windows
