// The port Forms on Linux: windows of the module "qt".
#pragma once

#include "platform/forms.h"
#include "platform/linux/loaded_desktop.h"

namespace platform_linux {

class LinuxForms : public platform::Forms {
public:
    // The desktop must outlive it.
    explicit LinuxForms(LoadedDesktop& desktop) : desktop_(desktop) {}

    std::unique_ptr<platform::Form> create(const platform::FormDesign& design, platform::FormEvents& events,
                                           platform::Form* owner) override;
    void run() override;
    void serve() override;
    void closeAll() override;
    void copyText(const std::string& text) override;
    std::optional<std::string> askFileToWrite(platform::Form& owner, const std::string& title,
                                              const std::string& suggestion, const std::string& kindOfFile,
                                              const std::string& ending) override;
    std::optional<std::string> askFileToRead(platform::Form& owner, const std::string& title,
                                             const std::string& folder) override;
    bool showInFolder(const std::string& path) override;
    bool composeMail(const std::string& subject, const std::string& text) override;
    std::string showPrinterFolder() override;

private:
    LoadedDesktop& desktop_;
};

}  // namespace platform_linux
