// Interface of the module "qt": windows on the user's desktop.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/dialogs.h"
#include "platform/forms.h"

namespace platform_linux::qt {

class Desktop {
public:
    virtual ~Desktop() = default;

    // As in the port Dialogs; the user answers with a button, or by closing the box: that means the last button, and
    // "ok" where there is no other.
    virtual platform::Answer messageBox(const std::string& text, platform::Buttons buttons, platform::Icon icon,
                                        const std::string& title) = 0;
    virtual void processEvents() = 0;

    // As in the port Forms. The desktop must outlive its forms.
    virtual std::unique_ptr<platform::Form> createForm(const platform::FormDesign& design, platform::FormEvents& events,
                                                       platform::Form* owner) = 0;
    virtual void runForms() = 0;
    virtual void closeForms() = 0;
    virtual void copyText(const std::string& text) = 0;
    virtual std::optional<std::string> askFileToWrite(platform::Form& owner, const std::string& title,
                                                      const std::string& suggestion, const std::string& kindOfFile,
                                                      const std::string& ending) = 0;
    virtual std::optional<std::string> askFileToRead(platform::Form& owner, const std::string& title,
                                                     const std::string& folder) = 0;
    // Asks the desktop's file manager to show a file in its folder, and does not wait; whether there is one on the
    // message bus. Where it refuses or does not answer in time, "otherwise" is called later.
    virtual bool markInFileManager(const std::string& path, std::function<void()> otherwise) = 0;
};

// The Unicode character of each byte of the DOS code page; 0 for none.
using CodePageSource = std::function<std::array<char32_t, 256>()>;

// The module's entry function, which takes what to ask for the code page when the first sheet of paper is painted;
// nothing where Qt has no screen to show windows on, or no plugin for it. Where it cannot
// reach the display it ends the process. To be called once.
using DesktopFactory = std::unique_ptr<Desktop> (*)(CodePageSource codePage);

}  // namespace platform_linux::qt
