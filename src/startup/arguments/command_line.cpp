#include "startup/arguments/command_line.h"

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/text.h"

namespace startup {

Mode modeOf(const clsArguments& arguments, const IsFile& isFile) {
    static constexpr std::array<std::pair<std::string_view, Mode>, 4> words{{
        {"/?", Mode::help},
        {"-H", Mode::help},
        {"--HELP", Mode::help},
        {"--VERSION", Mode::version},
    }};
    static constexpr std::array<std::pair<std::string_view, Mode>, 5> modes{{
        {"/DRUCKERAUSWAHL", Mode::printerSelection},
        {"/VORSCHAU", Mode::preview},
        {"/AUFTRAEGE", Mode::jobList},
        {"/INVERT", Mode::invert},
        {"/PRINTGRAPHIC", Mode::printGraphic},
    }};
    if (arguments.Count() == 0) {
        return Mode::usage;
    }
    const std::string first = runtime::upperCase(arguments.Item(1));
    for (const auto& [name, mode] : modes) {
        if (first == name) {
            return mode;
        }
    }
    for (const auto& [word, mode] : words) {
        if (first == word && arguments.Count() == 1 && !isFile(arguments.Item(1))) {
            return mode;
        }
    }
    return Mode::report;
}

Switches takeSwitches(clsArguments& arguments) {
    static constexpr std::array<std::pair<std::string_view, bool Switches::*>, 4> names{{
        {"/DEBUG", &Switches::blnDebug},
        {"/DEBUG2", &Switches::blnDebug2},
        {"/WAIT", &Switches::blnWait},
        {"/TWOPASS", &Switches::blnTwoPass},
    }};
    Switches switches;
    const std::vector<std::string> given(arguments.begin(), arguments.end());
    for (const std::string& argument : given) {
        for (const auto& [name, flag] : names) {
            if (argument == name) {
                switches.*flag = true;
                arguments.Remove(name);
            }
        }
    }
    return switches;
}

}  // namespace startup
