// The names that a queue's driver gives its paper sources.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform_linux::cups {

// The texts of the choices of InputSlot in a PPD file (version 4.3), UTF-8, in the file's order, which
// is that of the queue's media-source-supported. A choice has its text in the language given ("de"), if the file has
// it, otherwise in the file's own, otherwise its keyword. Anything that is no PPD file gives none.
std::vector<std::string> binNames(std::string_view ppd, std::string_view language);

}  // namespace platform_linux::cups
