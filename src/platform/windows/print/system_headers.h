// The system's headers for printing; in this folder they are included through this one only.
#pragma once

#include <windows.h>
// After windows.h, which it needs.
#include <winspool.h>

// A macro for the function of that name, which would rename the ports' structure as well.
#undef DeviceCapabilities
