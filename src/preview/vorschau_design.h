// What the preview and its print form look like.
#pragma once

#include "platform/form_design.h"

namespace preview {

inline constexpr const char* titleOfVorschau = "Korvano - Vorschau: ";

platform::FormDesign designOfVorschau();

// With the number of the page that is shown.
platform::FormDesign designOfDrucken(std::size_t page);

}  // namespace preview
