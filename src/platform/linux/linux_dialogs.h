// The port Dialogs on Linux: boxes on the desktop where there is one, otherwise lines on standard error.
#pragma once

#include <memory>
#include <optional>

#include "platform/dialogs.h"
#include "platform/linux/qt/qt_desktop.h"

namespace platform_linux {

// There is a desktop where DISPLAY or WAYLAND_DISPLAY is set and the module "qt" can open windows there; this is found
// out, and Qt loaded, with the first box. On standard error a box is one line (a text to be read, without an icon,
// several), "KRVWinPr: title: text", the title left out where it is the program's name; behind a question stands the
// answer taken for it. A notification is the business of a process of its own, which loads the module "notification"
// and is ended after half a minute: a session bus that hangs holds nobody up.
class LinuxDialogs : public platform::Dialogs {
public:
    platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                const std::string& title) override;
    void processEvents() override;
    void showTextFile(const std::string& path) override;
    void diagnostic(const std::string& line) override;
    void notify(const std::string& text) override;
    void outOfMemory() noexcept override;

private:
    template <typename Function>
    void withMemory(Function function) noexcept;
    qt::Desktop* desktop();

    std::optional<std::unique_ptr<qt::Desktop>> desktop_;  // nothing: not tried yet; a null pointer: there is none
};

}  // namespace platform_linux
