#include "session/session.h"

#include "runtime/program.h"

namespace session {

Session::Session(platform::Platform& ports) : platform(ports), log(ports.system) {
    program.version = runtime::programVersion;
    program.description = runtime::programDescription;
    const std::string fileName = ports.system.programFileName();
    program.name = fileName.substr(0, fileName.rfind('.'));
}

void Session::storeSettings() {
    if (!platform.settings.commit() && !settingsFailureTold_) {
        settingsFailureTold_ = true;
        platform.dialogs.diagnostic("Die Einstellungen konnten nicht gespeichert werden (" + platform.settings.place() +
                                    "); bitte Rechte und freien Platz prüfen.");
    }
}

}  // namespace session
