#include "session/Session.h"

#include "session/version.h"

namespace session {

Session::Session(platform::Platform& ports) : platform(ports), log(ports.system) {
    program.version = programVersion;
    program.description = programDescription;
    const std::string fileName = ports.system.programFileName();
    program.name = fileName.substr(0, fileName.rfind('.'));
}

}  // namespace session
