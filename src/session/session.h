// What every routine of one run needs: the ports, the debug log and what the program calls itself.
#pragma once

#include <memory>
#include <set>
#include <string>

#include "platform/platform.h"
#include "runtime/program.h"
#include "session/DebugLog.h"

namespace session {

struct Program {
    std::string title = runtime::programName;
    std::string version;      // major, minor and revision number, joined by "."
    std::string description;  // of the program file, German
    std::string name;         // of the program file, without folder and ending
};

struct Session {
private:
    const std::unique_ptr<DebugLog> ownLog_;

public:
    platform::Platform& platform;
    Program program;
    DebugLog& log;
    bool development = false;  // the environment asks for what is unfinished; a development build does it

    explicit Session(platform::Platform& ports);
    // A part of the same run with other ports: the log is the other session's, which must outlive this one.
    Session(platform::Platform& ports, Session& whole);

    const runtime::Locale& locale() const { return platform.system.locale(); }

    // What the run is doing, for whoever has to tell of its end.
    platform::Activity& activity() const { return platform.errorReports.activity(); }

    // Tells whoever started the program, once however often it is said.
    void tellOnce(const std::string& line);

    // Makes the settings set so far durable. That this failed is no error of the job; it is told once.
    void storeSettings();

private:
    std::set<std::string> told_;
};

}  // namespace session
