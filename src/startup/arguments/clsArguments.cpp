#include "startup/arguments/clsArguments.h"

#include <utility>

#include "runtime/text.h"

namespace startup {

clsArguments::clsArguments(std::string_view commandTail) {
    std::string_view rest = runtime::trimBlanks(commandTail);
    std::string token;
    while (!rest.empty()) {
        const char c = rest.front();
        rest.remove_prefix(1);
        if (c == '"') {
            const std::size_t closing = rest.find('"');
            token = rest.substr(0, closing);
            rest.remove_prefix(closing == std::string_view::npos ? rest.size() : closing + 1);
        } else if (c == ' ') {
            arguments_.push_back(std::exchange(token, {}));
        } else {
            token += c;
        }
    }
    if (!token.empty()) {
        arguments_.push_back(token);
    }
}

std::string clsArguments::Item(std::size_t position) const {
    return position >= 1 && position <= arguments_.size() ? arguments_[position - 1] : std::string();
}

void clsArguments::Remove(std::size_t position) {
    if (position >= 1 && position <= arguments_.size()) {
        arguments_.erase(arguments_.begin() + static_cast<std::ptrdiff_t>(position - 1));
    }
}

void clsArguments::Remove(std::string_view name) {
    std::erase_if(arguments_, [name](const std::string& argument) { return runtime::upperCase(argument) == name; });
}

}  // namespace startup
