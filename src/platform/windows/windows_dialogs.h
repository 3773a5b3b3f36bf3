// The port Dialogs on Windows: the system's message boxes and its text editor. A box belongs to the program's topmost
// window.
#pragma once

#include <cstdint>

#include "platform/dialogs.h"

namespace platform_windows {

// A box is seen where the process belongs to a desktop that a user sees; a service or a task in the background does
// not, and a box there would wait for ever. Then, as with diagnostics, the text is one line (a text to be read, without
// an icon, several) on standard error, in the ANSI code page, "KRVWinPr: title: text", the title left out where it is
// the program's name; behind a question stands the answer taken for it. Standard error is what whoever started the
// program made it: a file, a pipe or nothing. A notification is shown by a second process (notification_area.h).
class WindowsDialogs final : public platform::Dialogs {
public:
    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override;
    void processEvents() override;
    void showTextFile(const std::string& path) override;
    void diagnostic(const std::string& line) override;
    bool answerCaller(const std::string& text) override;
    // Nobody: a shell does not wait for a program with windows, and the console of a host that does is its own screen.
    bool watched() override { return false; }
    void statusLine(const std::string& /*line*/) override {}
    void notify(const std::string& text) override;
    void outOfMemory() noexcept override;

private:
    void show(const std::string& path);

    std::uint64_t eventsRunAt_ = 0;  // milliseconds
};

}  // namespace platform_windows
