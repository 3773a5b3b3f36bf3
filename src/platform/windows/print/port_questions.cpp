#include "platform/windows/print/port_questions.h"

#include <algorithm>
#include <array>

#include "platform/windows/newer_functions.h"
#include "platform/windows/wide_text.h"

namespace platform_windows::print {

namespace {

// The file that a driver's output goes to, the same for documents (XPS and PDF), and the number of a fax.
constexpr std::array asking = {L"FILE:", L"PORTPROMPT:", L"XPSPort:", L"SHRFAX:"};

}  // namespace

std::string askingPort(std::string_view ports) {
    constexpr std::string_view between = ", ";
    while (!ports.empty()) {
        ports.remove_prefix(std::min(ports.find_first_not_of(between), ports.size()));
        const std::string_view port = ports.substr(0, ports.find(','));
        std::string name(port.substr(0, port.find_last_not_of(' ') + 1));
        if (std::any_of(asking.begin(), asking.end(),
                        [wide = widen(name)](const wchar_t* known) { return isSameName(known, wide); })) {
            return name;
        }
        ports.remove_prefix(port.size());
    }
    return {};
}

}  // namespace platform_windows::print
