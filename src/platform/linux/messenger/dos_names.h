// Names as DOS has them, and the files that they are.
#pragma once

#include <string>
#include <string_view>

namespace platform_linux::messenger {

// But for the case of letters; those of ASCII alone, as no others are in the names of orders.
bool isSameName(std::string_view one, std::string_view other);

// The path with the folder's own names at its end for those that may be short for them: "/dos/FIRMAD~1/LAGER" is
// "/dos/Firma Daten/Lager" for that folder. So emulators show a name that is too long for DOS.
std::string withLongNames(std::string path, std::string_view folder);

}  // namespace platform_linux::messenger
