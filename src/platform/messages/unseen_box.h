// What stands for a message box where nobody can see one; every adapter's port Dialogs needs it.
#pragma once

#include <string>
#include <string_view>

#include "platform/dialogs.h"

namespace platform::messages {

// One line of what may be several: line ends, and whatever could disturb a terminal, become single blanks.
std::string oneLine(std::string_view text);

// What a box says: its title, left out where it is the program's name, its text, and behind a question the answer taken
// for it. A text to be read, in a box without an icon, keeps its lines, which end with "\n"; a message is one line.
std::string unseenBox(std::string_view text, Buttons buttons, Icon icon, std::string_view title);

// The answer to a box that nobody sees: the first button.
Answer unseenAnswer(Buttons buttons);

}  // namespace platform::messages
