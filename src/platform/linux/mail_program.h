// The user's mail program.
#pragma once

#include <string>

namespace platform_linux {

// As in the port Forms. Asking the desktop which program that is takes a moment.
bool openMail(const std::string& subject, const std::string& text);

}  // namespace platform_linux
