// When a document is made, as far as its reader is concerned.
#pragma once

#include <ctime>

namespace platform_linux::documents {

// The environment's SOURCE_DATE_EPOCH (seconds since 1970, for output that is the same every time) where that is a
// moment up to the year 9999, otherwise now.
std::time_t creationTime();

}  // namespace platform_linux::documents
