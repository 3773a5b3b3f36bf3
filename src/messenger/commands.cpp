#include "messenger/commands.h"

#include <algorithm>
#include <memory>
#include <optional>

#include "messenger/file_in.h"
#include "messenger/host_program.h"
#include "messenger/messenger_settings.h"
#include "runtime/error.h"
#include "runtime/program.h"
#include "runtime/utf8.h"

namespace messenger {

namespace {

std::optional<std::string> contentOf(platform::System& system, const std::string& file) {
    try {
        return system.readFile(file);
    } catch (const runtime::Error&) {
        return std::nullopt;
    }
}

void putHostProgram(platform::System& system, const platform::OrderFolder& folder) {
    const std::string file = fileIn(folder.path(), hostProgramName);
    if (contentOf(system, file) != hostProgram()) {
        system.writeFile(file, hostProgram());
    }
}

// One that somebody has put there himself stays.
void removeHostProgram(platform::System& system, const platform::OrderFolder& folder) {
    const std::string file = fileIn(folder.path(), hostProgramName);
    if (contentOf(system, file) == hostProgram()) {
        system.removeFile(file);
    }
}

// Where a list names the folder, under whatever name; its end where it does not.
std::vector<std::string>::iterator findIn(std::vector<std::string>& list, platform::OrderFolder& folder) {
    return std::ranges::find_if(list,
                                [&](const std::string& named) { return named == folder.path() || folder.isAt(named); });
}

// A folder that is gone can be named as well.
std::unique_ptr<platform::OrderFolder> openIfThere(platform::MessengerSystem& messengerSystem,
                                                   const std::string& path) {
    try {
        return messengerSystem.open(path);
    } catch (const runtime::Error&) {
        return nullptr;
    }
}

void store(platform::SettingsStore& settings, const std::vector<std::string>& folders) {
    if (!storeFolders(settings, folders)) {
        throw runtime::Error(runtime::errPathFileAccess,
                             "Die Einstellungen lassen sich nicht ändern: " + settings.place());
    }
}

}  // namespace

std::string switchOn(platform::System& system, platform::MessengerSystem& messengerSystem,
                     const std::vector<std::string>& folders) {
    const auto settings = messengerSystem.settings();
    std::vector<std::string> named = readSettings(*settings).folders;
    std::string said;
    for (const std::string& path : folders) {
        const auto folder = messengerSystem.open(path);
        if (system.fileExists(fileIn(folder->path(), std::string(runtime::programName) + ".exe"))) {
            throw runtime::Error(
                runtime::errFileExists,
                "In " + runtime::shown(folder->path()) +
                    " liegt KRVWinPr.exe. Ein Host fände dort KRVWINPR.COM statt ihrer: sie bitte in einen "
                    "anderen Ordner legen, oder ohne den Boten arbeiten.");
        }
        putHostProgram(system, *folder);
        if (findIn(named, *folder) == named.end()) {
            named.push_back(folder->path());
        }
        said += runtime::shown(folder->path()) + " wird überwacht; KRVWINPR.COM liegt dort.\n";
    }
    store(*settings, named);
    const std::string left = messengerSystem.startWithSession(true);
    return said + (left.empty() ? "Der Bote läuft, und startet von jetzt an mit der Anmeldung." : left);
}

std::string switchOff(platform::System& system, platform::MessengerSystem& messengerSystem,
                      const std::vector<std::string>& folders) {
    if (folders.empty()) {
        const std::string left = messengerSystem.startWithSession(false);
        return left.empty() ? "Der Bote ist beendet und startet nicht mehr mit der Anmeldung." : left;
    }
    const auto settings = messengerSystem.settings();
    std::vector<std::string> named = readSettings(*settings).folders;
    std::string said;
    for (const std::string& path : folders) {
        const auto folder = openIfThere(messengerSystem, path);
        const auto at = folder ? findIn(named, *folder) : std::ranges::find(named, path);
        if (folder) {
            removeHostProgram(system, *folder);
        }
        if (at == named.end()) {
            said += runtime::shown(path) + " war nicht überwacht.\n";
        } else {
            said += runtime::shown(*at) + " wird nicht mehr überwacht.\n";
            named.erase(at);
        }
    }
    store(*settings, named);
    said.pop_back();
    return said;
}

std::string status(platform::MessengerSystem& messengerSystem) {
    const auto settings = messengerSystem.settings();
    std::string said = "Einstellungen: " + settings->place();
    const std::vector<std::string> folders = readSettings(*settings).folders;
    if (folders.empty()) {
        return said + "\nEs ist kein Ordner genannt.";
    }
    for (const std::string& path : folders) {
        said += "\n" + runtime::shown(path) + ": ";
        try {
            const std::string holder = messengerSystem.open(path)->holder();
            said += holder.empty() ? "Dort ist kein Bote." : "Dort ist der Bote " + runtime::shown(holder) + ".";
        } catch (const runtime::Error& error) {
            said += error.message();
        }
    }
    return said;
}

std::string version() { return std::string(runtime::programName) + "Bote " + runtime::programVersion; }

std::string usage() {
    return version() +
           " führt Aufträge von Hosts aus, die in einem DOS-Emulator laufen.\n\n"
           "KRVWinPrBote                  führt die Aufträge der genannten Ordner aus\n"
           "KRVWinPrBote Ordner...        nur die dieser Ordner\n"
           "KRVWinPrBote /EIN Ordner...   nennt Ordner, legt KRVWINPR.COM hinein, startet mit der Anmeldung\n"
           "KRVWinPrBote /AUS Ordner...   diese Ordner nicht mehr\n"
           "KRVWinPrBote /AUS             startet nicht mehr mit der Anmeldung und endet\n"
           "KRVWinPrBote /STATUS          welche Ordner genannt sind, und wer dort ist\n"
           "KRVWinPrBote --help           dieser Text; auch -h und /?\n"
           "KRVWinPrBote --version        nur Name und Fassung";
}

}  // namespace messenger
