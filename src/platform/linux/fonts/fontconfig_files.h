// What of the system the answers of fontconfig depend on.
#pragma once

#include <fontconfig/fontconfig.h>

#include <string>
#include <vector>

namespace platform_linux::fonts {

// The environment variables that it looks at (fonts.conf(5), and the locale for the language of fonts), as one text.
std::string fontconfigEnvironment();

// Its configuration's files, with the folders that they come from, and all folders of fonts; also those of the user's
// own that are not there yet.
std::vector<std::string> fontconfigFiles(FcConfig* config);

}  // namespace platform_linux::fonts
