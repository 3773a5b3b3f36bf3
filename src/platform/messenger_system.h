// Port: what happens around the messenger, and the programs that it starts.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/order_folder.h"
#include "platform/settings_store.h"

namespace platform {

// A program that was started; never the number of another one.
using ProgramId = std::uint64_t;

struct MessengerEvent {
    enum class Kind {
        folderChanged,      // something happened in the folder, or may have
        completionWritten,  // the program says that it has written the completion file
        programEnded,       // tells how
        stop,               // the messenger is to end
    };
    Kind kind = Kind::stop;
    const OrderFolder* folder = nullptr;
    ProgramId program = 0;
    // Empty where the program ended as it should; otherwise a clause, "Signal 11 (SIGSEGV)".
    std::string how;
};

class MessengerSystem {
public:
    virtual ~MessengerSystem() = default;

    // Watches a folder from now on, as long as the object lives. Path: of the system. errPathNotFound where there is no
    // such folder, errPermissionDenied.
    virtual std::unique_ptr<OrderFolder> open(const std::string& path) = 0;

    // What has happened, waiting for something no longer than so long. Of a program first that the completion file is
    // written, then that it ended.
    virtual std::vector<MessengerEvent> wait(std::chrono::milliseconds atMost) = 0;

    // Starts a program (an absolute path) in a folder with a command tail, UTF-8, exactly as it stands. It lives on
    // when the messenger ends. errFileNotFound where there is no such program, errPermissionDenied.
    virtual ProgramId start(const std::string& program, const OrderFolder& folder, const std::string& tail) = 0;
    // As the system's tools number it.
    virtual std::uint32_t processNumber(ProgramId program) = 0;

    // The user's settings as they are now.
    virtual std::unique_ptr<SettingsStore> settings() = 0;

    // A line for the journal (event log). Never throws.
    enum class Severity { information, warning, error };
    virtual void log(Severity severity, const std::string& line) noexcept = 0;

    // Shows a short message on the user's desktop, without waiting for anybody; dropped where there is none. Never
    // throws.
    virtual void notify(const std::string& text) noexcept = 0;

    // Answers whoever has called the messenger with a command: on the terminal, otherwise in a box.
    virtual void tell(const std::string& text) = 0;

    // Who this is, as KRVWINPR.BOT says it: user, machine, process.
    virtual std::string identity() = 0;

    // Lets the messenger start with the user's session, or no longer, and begin now. What is still to be done by hand,
    // as sentences; empty for nothing. Throws runtime::Error where it fails.
    virtual std::string startWithSession(bool on) = 0;
};

}  // namespace platform
