#include "session/session.h"

#include <cstdlib>
#include <string_view>

#include "runtime/program.h"

namespace session {

namespace {

bool asksForDevelopment() {
    const char* value = std::getenv("KRVWINPR_DEVELOPMENT");
    return value != nullptr && std::string_view(value) == "1";
}

}  // namespace

Session::Session(platform::Platform& ports)
    : ownLog_(std::make_unique<DebugLog>(ports.system)),
      platform(ports),
      log(*ownLog_),
      development(asksForDevelopment()) {
    program.version = runtime::programVersion;
    program.description = runtime::programDescription;
    const std::string fileName = ports.system.programFileName();
    program.name = fileName.substr(0, fileName.rfind('.'));
}

Session::Session(platform::Platform& ports, Session& whole)
    : platform(ports), program(whole.program), log(whole.log), development(whole.development) {}

void Session::tellOnce(const std::string& line) {
    if (told_.insert(line).second) {
        platform.dialogs.diagnostic(line);
    }
}

void Session::storeSettings() {
    if (!platform.settings.commit()) {
        tellOnce("Die Einstellungen konnten nicht gespeichert werden (" + platform.settings.place() +
                 "); bitte Rechte und freien Platz prüfen.");
    }
}

}  // namespace session
