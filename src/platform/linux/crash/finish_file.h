// The completion file, as a handler of crashes writes it.
#pragma once

namespace platform_linux::crash {

// Writes KRVWINPR.OK into the current directory as System::writeFile() does: in one step, in place of the file of that
// name in any case of letters. Whether it is there now.
bool writeFinishFile() noexcept;

}  // namespace platform_linux::crash
