// The port Dialogs on Linux: boxes on the desktop where there is one, otherwise lines on standard error.
#pragma once

#include "platform/dialogs.h"
#include "platform/linux/loaded_desktop.h"

namespace platform_linux {

// On standard error a box is one line (a text to be read, without an icon, several), "KRVWinPr: title: text", the title
// left out where it is the program's name; behind a question stands the answer taken for it. A notification is the
// business of a process of its own, which loads the module "notification" and is ended after half a minute: a session
// bus that hangs holds nobody up.
class LinuxDialogs : public platform::Dialogs {
public:
    // The desktop, which is asked for with the first box, must outlive it.
    explicit LinuxDialogs(LoadedDesktop& desktop) : desktop_(desktop) {}

    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override;
    void processEvents() override;
    void showTextFile(const std::string& path) override;
    void diagnostic(const std::string& line) override;
    bool answerCaller(const std::string& text) override;
    bool watched() override;
    void statusLine(const std::string& line) override;
    void notify(const std::string& text) override;
    void outOfMemory() noexcept override;

private:
    template <typename Function>
    void withMemory(Function function) noexcept;
    void tell(const std::string& text);
    void takeStatusLineAway() noexcept;

    bool statusShown_ = false;
    LoadedDesktop& desktop_;
};

}  // namespace platform_linux
