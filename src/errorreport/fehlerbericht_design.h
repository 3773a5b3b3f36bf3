// What the form of an error report holds.
#pragma once

#include "platform/form_design.h"

namespace errorreport {

platform::FormDesign designOfFehlerbericht();

}  // namespace errorreport
