// What a command line asks for.
#pragma once

#include "startup/arguments/clsArguments.h"

namespace startup {

enum class Mode { usage, printerSelection, preview, jobList, invert, printGraphic, report };

// By the first argument, a mode's name in any case; without one the usage is shown. The switches must be out already.
Mode modeOf(const clsArguments& arguments);

struct Switches {
    bool blnWait = false;
    bool blnTwoPass = false;
    bool blnDebug = false;
    bool blnDebug2 = false;
};

// Takes the global switches out of the arguments. They count in upper case only; a removal takes every case variant.
Switches takeSwitches(clsArguments& arguments);

}  // namespace startup
