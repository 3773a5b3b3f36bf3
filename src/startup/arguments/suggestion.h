// What may have been meant by an argument that is taken for a file's name.
#pragma once

#include <cstddef>
#include <string>

namespace startup {

// A question in German that names the switch, the mode or the word that an argument at a position (from 1) looks like:
// one in lower case, misspelt, or in a place where it does not count. Empty for anything that looks like a name.
std::string askWhatWasMeant(const std::string& argument, std::size_t position);

}  // namespace startup
