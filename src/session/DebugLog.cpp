#include "session/DebugLog.h"

#include "runtime/datetime.h"

namespace session {

void DebugLog::write(std::string_view text, int lineLevel, std::string_view name) {
    if (!writes(lineLevel)) {
        return;
    }
    if (name != defaultName) {
        name_ = name;
    }
    if (name_.empty()) {
        const std::string program = system_.programFileName();
        name_ = program.substr(0, program.find('.')) + ".LOG";
    }
    system_.appendFile(name_, system_.toSystemCodePage(text) + "\r\n");
}

void DebugLog::stamped(const std::string& message, int lineLevel) {
    write(runtime::dateTimeText(system_.localTime(), system_.locale()) + message, lineLevel);
}

}  // namespace session
