#include "platform/linux/mail_program.h"

#include <array>
#include <cstdio>
#include <memory>

#include "platform/linux/detached_start.h"
#include "platform/linux/forked_call.h"
#include "platform/messages/mail_link.h"

namespace platform_linux {

namespace {

struct CloseProgram {
    void operator()(std::FILE* output) const { ::pclose(output); }
};

// Without one, xdg-open would show the address in a browser.
bool hasProgramForMail() {
    constexpr std::chrono::seconds limit{3};
    const auto named = [] {
        constexpr const char* command = "xdg-mime query default x-scheme-handler/mailto";
        const std::unique_ptr<std::FILE, CloseProgram> output(::popen(command, "r"));
        std::array<char, 256> name{};
        return output && std::fgets(name.data(), name.size(), output.get()) != nullptr && name[0] != '\n' ? 1 : 0;
    };
    return forkedCall(named, limit).value_or(0) != 0;
}

}  // namespace

bool openMail(const std::string& subject, const std::string& text) {
    // An argument of a program is 128 KiB at most, and what web pages take for mail is less.
    constexpr std::size_t most = 30'000;
    return hasProgramForMail() &&
           DetachedStart().start({"xdg-open", platform::messages::mailLink(subject, text, most)});
}

}  // namespace platform_linux
