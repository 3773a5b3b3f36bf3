// What the program says of its own use.
#pragma once

#include <string>

#include "session/session.h"

namespace startup {

// The usage as a box shows it, lines ended by CR LF: title and version, and one line with all parameters.
std::string usageText(const session::Program& program);

// The same for a shell, lines of at most 79 characters ended by LF: the usage, and behind it what modes, arguments,
// switches, files and variables there are, with the places that hold for this user.
std::string helpText(const session::Session& session);

// Name and version in a line.
std::string versionText(const session::Program& program);

}  // namespace startup
