// Which shortcut of a form a key is.
#pragma once

#include <QKeyEvent>
#include <vector>

#include "platform/form_design.h"

namespace platform_linux::qt {

// Null where it is none. In a box only some count.
const platform::Shortcut* shortcutOf(const std::vector<platform::Shortcut>& shortcuts, const QKeyEvent& event,
                                     bool inBox);

}  // namespace platform_linux::qt
