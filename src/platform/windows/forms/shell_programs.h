// Programs of the user's that the system opens: its file manager, the mail program.
#pragma once

#include <string>

namespace platform_windows::forms {

// As the port Forms has them.
std::string openPrinterFolder();
bool openFolderOf(const std::string& file);
bool openMail(const std::string& subject, const std::string& text);

}  // namespace platform_windows::forms
