// Interface of the module "notification": asks the desktop's notification service to show a message.
#pragma once

#include <string>

namespace platform_linux::notification {

// The module's entry function. The text is plain, UTF-8. False where there is no session bus, nobody on it who shows
// notifications, or the message was refused. Waits for them as long as they keep it waiting.
using ShowNotification = bool (*)(const std::string& text);

}  // namespace platform_linux::notification
