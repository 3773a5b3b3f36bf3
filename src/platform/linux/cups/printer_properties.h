// The page of a queue in CUPS's own administration.
#pragma once

#include <string>

namespace platform_linux::cups {

// Opens it in the user's browser. Throws platform::SpoolerError, with the page's address, where there is no desktop or
// nothing that opens it.
void showQueuePage(const std::string& queue);

}  // namespace platform_linux::cups
