#include "messenger/Main.h"

#include <exception>
#include <optional>
#include <string>
#include <vector>

#include "messenger/commands.h"
#include "messenger/messenger.h"
#include "runtime/error.h"
#include "runtime/text.h"
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
    return command == "/?" || command == "-H" || command == "--HELP" ? std::optional(usage()) : std::nullopt;
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
