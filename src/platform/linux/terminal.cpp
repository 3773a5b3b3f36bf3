#include "platform/linux/terminal.h"

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/linux/standard_error.h"
#include "runtime/text.h"

namespace platform_linux {

namespace {

std::size_t columns() {
    constexpr std::size_t usual = 80;
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : usual;
}

}  // namespace

bool isShellsOutput() noexcept {
    struct stat output {};
    return ::fstat(STDOUT_FILENO, &output) == 0 && !S_ISSOCK(output.st_mode);
}

bool terminalIsWatched() noexcept {
    termios terminal{};
    const char* const kind = ::getenv("TERM");
    return ::tcgetattr(STDERR_FILENO, &terminal) == 0 && (terminal.c_lflag & ICANON) != 0 && kind != nullptr &&
           *kind != '\0' && std::string_view(kind) != "dumb" && ::tcgetpgrp(STDERR_FILENO) == ::getpgrp();
}

void writeOverTerminalLine(std::string_view line) {
    constexpr const char* clearToEnd = "\x1B[K";
    const bool stays = line.ends_with('\n');
    const std::string_view text = line.substr(0, line.size() - (stays ? 1 : 0));
    writeToStandardError(
        "\r" + std::string(runtime::beginningOf(text, columns() - 1)) + clearToEnd + (stays ? "\n" : ""), 0);
}

}  // namespace platform_linux
