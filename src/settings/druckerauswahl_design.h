// What the printer selection looks like.
#pragma once

#include "platform/forms.h"

namespace settings {

// The form's heights: as it comes, as it is folded again, and with everything to be seen.
inline constexpr platform::FormHeight heightAtFirst{2925, 83};
inline constexpr platform::FormHeight heightFolded{3000, 83};
inline constexpr platform::FormHeight heightUnfolded{7500, 222};

inline constexpr const char* titleOfDruckerAuswahl = "Korvano - Druckerauswahl";
inline constexpr const char* captionUnfold = "Erweitert >>";
inline constexpr const char* captionFold = "Erweitert <<";

platform::FormDesign designOfDruckerAuswahl();

}  // namespace settings
