// Messages in the taskbar's notification area. The system shows one only while the process lives that asks for it; so
// the program is started a second time, for the message alone, and whoever has something to tell does not wait for
// that.
#pragma once

#include <string_view>

namespace platform_windows {

// Has a second process show the text, UTF-8, under the program's name; of a long one its beginning. Nothing happens
// where that process cannot be started.
void notifyInSecondProcess(std::string_view text);

// Whether this process is such a second one; then it has shown its message, until the user or half a minute ended it.
// To be asked before anything else is done.
bool wasNotification() noexcept;

}  // namespace platform_windows
