// A picture as an object of a document (ISO 32000-1, 8.9.5), in its own depth and colours, nothing lost.
#pragma once

#include "platform/linux/pdf/object_writer.h"
#include "platform/picture.h"

namespace platform_linux::pdf {

// Palettes that are the shades of grey in order become no palette. A JPEG file is stored as it is where viewers know
// its kind. Returns the number of the object.
int writePicture(ObjectWriter& writer, const platform::Picture& picture);

}  // namespace platform_linux::pdf
