// The program once more, for what is to outlive the process.
#pragma once

namespace platform_windows {

// Starts it without arguments and with a variable in its environment, which says what it is to do: no command line of
// the host can be taken for it. Its current directory is not the host's, which the host may want to remove. Allocates
// nothing itself.
bool startSecondProcess(const wchar_t* variable, const wchar_t* value) noexcept;

}  // namespace platform_windows
