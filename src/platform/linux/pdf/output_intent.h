// Which colours a document for the archive means by its red, green, blue and grey (ISO 19005-2, 6.2.3).
#pragma once

#include <string>

#include "platform/linux/pdf/object_writer.h"

namespace platform_linux::pdf {

// Writes the profile, and appends the catalog's entry.
void appendOutputIntent(ObjectWriter& writer, std::string& catalog);

}  // namespace platform_linux::pdf
