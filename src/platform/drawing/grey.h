// What colours become on a printer without colour.
#pragma once

#include "platform/color.h"
#include "platform/picture.h"

namespace platform::drawing {

// Luma by ITU-R BT.601.
Color greyOf(Color color);

// The palette becomes grey; 24 bits a pixel become 8.
Picture greyOf(const Picture& picture);

// Whether every colour is a shade of grey already.
bool isGrey(const Picture& picture);

}  // namespace platform::drawing
