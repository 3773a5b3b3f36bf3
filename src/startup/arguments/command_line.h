// What a command line asks for.
#pragma once

#include <functional>
#include <string>

#include "startup/arguments/clsArguments.h"

namespace startup {

enum class Mode { usage, help, version, printerSelection, preview, jobList, invert, printGraphic, report };

// Whether there is a file of that name.
using IsFile = std::function<bool(const std::string& name)>;

// By the first argument, a mode's name in any case; without one the usage is shown. The words that ask for help or for
// the version count alone, and only where no file has that name. The switches must be out already.
Mode modeOf(const clsArguments& arguments, const IsFile& isFile);

struct Switches {
    bool blnWait = false;
    bool blnTwoPass = false;
    bool blnDebug = false;
    bool blnDebug2 = false;
};

// Takes the global switches out of the arguments. They count in upper case only; a removal takes every case variant.
Switches takeSwitches(clsArguments& arguments);

}  // namespace startup
