// The system's header for drawing; in this folder it is included through this one only.
#pragma once

#include <windows.h>

// A macro for the function of that name, which would rename the ports' structure as well.
#undef DeviceCapabilities
