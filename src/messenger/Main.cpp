#include "messenger/Main.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "messenger/commands.h"
#include "messenger/messenger.h"
#include "runtime/error.h"
#include "runtime/text.h"
#include "runtime/utf8.h"
#include "startup/arguments/clsArguments.h"

namespace messenger {

namespace {

using Severity = platform::MessengerSystem::Severity;

// The arguments are paths; two blanks between them are no argument.
std::vector<std::string> argumentsOf(platform::System& system) {
    const startup::clsArguments all(system.commandTail());
    std::vector<std::string> arguments(all.begin(), all.end());
    std::erase(arguments, std::string());
    return arguments;
}

// Whether the first argument looks like a command; a folder that is named by one name behind the root may be just that.
bool isNoFolder(platform::MessengerSystem& messengerSystem, const std::vector<std::string>& arguments) {
    if (arguments.empty() || std::string_view("/-").find(arguments.front().front()) == std::string_view::npos ||
        arguments.front().find_first_of("/\\", 1) != std::string::npos) {
        return false;
    }
    try {
        messengerSystem.open(arguments.front());
        return false;
    } catch (const runtime::Error&) {
        return true;
    }
}

// What a command says to whoever calls it; nothing for no command.
std::optional<std::string> obey(platform::System& system, platform::MessengerSystem& messengerSystem,
                                const std::vector<std::string>& arguments) {
    const std::string command = arguments.empty() ? std::string() : runtime::upperCase(arguments.front());
    const std::vector<std::string> folders(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
    if (command == "/EIN") {
        return switchOn(system, messengerSystem, folders);
    }
    if (command == "/AUS") {
        return switchOff(system, messengerSystem, folders);
    }
    if (command == "/STATUS") {
        return status(messengerSystem);
    }
    if (command == "/?" || command == "-H" || command == "--HELP") {
        return usage();
    }
    if (command == "--VERSION") {
        return version();
    }
    if (isNoFolder(messengerSystem, arguments)) {
        throw runtime::Error(runtime::errInvalidCall, runtime::shown(arguments.front()) +
                                                          " ist weder ein Befehl noch ein Ordner.\n\n" + usage());
    }
    return std::nullopt;
}

}  // namespace

int Main(platform::System& system, platform::MessengerSystem& messengerSystem) noexcept {
    try {
        const std::vector<std::string> arguments = argumentsOf(system);
        try {
            if (const auto said = obey(system, messengerSystem, arguments)) {
                messengerSystem.tell(*said);
                return 0;
            }
        } catch (const runtime::Error& error) {
            messengerSystem.tell(error.message());
            return 1;
        }
        Messenger(system, messengerSystem, arguments).run();
        return 0;
    } catch (const std::exception& error) {
        messengerSystem.log(Severity::error, error.what());
        return 1;
    }
}

}  // namespace messenger
