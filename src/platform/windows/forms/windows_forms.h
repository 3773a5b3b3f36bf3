// The port Forms on Windows.
#pragma once

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms.h"
#include "platform/windows/forms/windows_form.h"

namespace platform_windows::forms {

class WindowsForms final : public platform::Forms, public FormKeeper {
public:
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
    bool receive(MSG& message);
    void handle(MSG& message);
    void gone(WindowsForm& form) noexcept override;
    void failed() noexcept override;

    std::vector<WindowsForm*> open_;
    std::exception_ptr failure_;
};

}  // namespace platform_windows::forms
