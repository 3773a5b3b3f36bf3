#include "platform/linux/printer_folder.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/linux/detached_start.h"

namespace platform_linux {

namespace {

using Command = std::vector<std::string>;

constexpr const char* cupsPage = "http://localhost:631/printers";

// Whether it is among those that the session says it is; derived ones name their model behind themselves.
bool isDesktop(std::string_view name) {
    const char* value = std::getenv("XDG_CURRENT_DESKTOP");
    const std::string names = ":" + std::string(value != nullptr ? value : "") + ":";
    return names.find(":" + std::string(name) + ":") != std::string::npos;
}

// The first that is there is the one that the user knows. The settings of GNOME and of KDE show nothing elsewhere.
std::vector<Command> printerSettings() {
    std::vector<Command> result;
    if (isDesktop("GNOME") || isDesktop("Unity")) {
        result.push_back({"gnome-control-center", "printers"});
    } else if (isDesktop("KDE")) {
        for (const char* program : {"systemsettings", "systemsettings5", "kcmshell6", "kcmshell5"}) {
            result.push_back({program, "kcm_printer_manager"});
        }
    }
    result.push_back({"system-config-printer"});
    result.push_back({"xdg-open", cupsPage});
    return result;
}

}  // namespace

std::string openPrinterFolder() {
    const std::vector<Command> programs = printerSettings();
    const DetachedStart detached;
    if (std::any_of(programs.begin(), programs.end(),
                    [&](const Command& command) { return detached.start(command); })) {
        return {};
    }
    return "Hier ist kein Programm für die Einstellungen der Drucker vorhanden. Bitte das Paket "
           "„system-config-printer“ installieren oder im Browser die Seite " +
           std::string(cupsPage) + " öffnen.";
}

}  // namespace platform_linux
