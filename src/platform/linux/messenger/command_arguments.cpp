#include "platform/linux/messenger/command_arguments.h"

#include <algorithm>

#include "runtime/text.h"

namespace platform_linux::messenger {

std::vector<std::string> argumentsOf(std::string_view tail) {
    std::string_view rest = runtime::trimBlanks(tail);
    std::vector<std::string> arguments;
    while (!rest.empty()) {
        bool quoted = false;
        std::size_t end = 0;
        for (; end < rest.size() && (quoted || rest[end] != ' '); ++end) {
            quoted = quoted != (rest[end] == '"');
        }
        arguments.emplace_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return arguments;
}

}  // namespace platform_linux::messenger
