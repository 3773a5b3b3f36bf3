// The user's session around the messenger.
#pragma once

#include <string>

namespace platform_linux::messenger {

// Lets the messenger, a program of that path, start with each session or no longer, and begin (end) now: as a unit of
// the user's systemd where that runs and the unit lies where it is installed, otherwise by an entry of what desktops
// start (Desktop Application Autostart 0.5). What is left to do by hand, as sentences. Throws runtime::Error.
std::string startWithSession(bool on, const std::string& program);

// Takes over what the user's systemd knows of the desktop, if the messenger was started before there was one: so that a
// program started from here may open windows there.
void joinDesktop();

}  // namespace platform_linux::messenger
