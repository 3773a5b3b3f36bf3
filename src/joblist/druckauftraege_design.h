// What the job list looks like.
#pragma once

#include "platform/form_design.h"

namespace joblist {

inline constexpr const char* titleOfDruckauftraege = "Korvano - Druckaufträge";

platform::FormDesign designOfDruckauftraege();

}  // namespace joblist
