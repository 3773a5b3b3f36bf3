// The port System on Linux.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/code_page.h"
#include "platform/linux/starter.h"
#include "platform/settings_store.h"
#include "platform/system.h"

namespace platform_linux {

// The system's code page is UTF-8. Everything that costs time (locale, code page, screen) is found out when it is first
// asked for. Must not outlive the arguments of main() and the settings.
class LinuxSystem : public platform::System {
public:
    LinuxSystem(int argumentCount, const char* const* arguments, platform::SettingsStore& settings);

    // The arguments behind the program's name, joined by blanks so that the program's own splitting finds each of them
    // again: one with a blank is put between double quotes, unless it already has one; an empty one is "".
    std::string commandTail() override;
    std::string programDirectory() override;
    std::string programFileName() override;
    std::string currentDirectory() override;
    void changeDirectory(const std::string& folder) override;
    std::string userName() override;
    std::string readFile(const std::string& path) override;
    std::unique_ptr<platform::FileReader> openToRead(const std::string& path) override;
    std::uint64_t fileSize(const std::string& path) override;
    void writeFile(const std::string& path, std::string_view content) override;
    void rewriteFile(const std::string& path, std::string_view content) override;
    void appendFile(const std::string& path, std::string_view content) override;
    bool fileExists(const std::string& path) override;
    void removeFile(const std::string& path) override;
    bool wouldReplace(const std::string& written, const std::string& path) override;
    std::unique_ptr<platform::Profile> openProfile(const std::string& path) override;
    std::string fileNamed(const std::string& name) override;
    runtime::DateTime localTime() override;
    const runtime::Locale& locale() override;
    std::string toSystemCodePage(std::string_view text) override;
    std::string fromDosCodePage(std::string_view bytes) override;
    int screenDpiX() override { return screenDpi(); }
    int screenDpiY() override { return screenDpi(); }
    bool screenAnswers() override;
    void sleep(int milliseconds) override;
    std::int64_t elapsedMilliseconds() override;
    void tellStarter() noexcept override { starter_.tellCompletion(); }
    std::string shellCommand(const std::string& folder, const std::vector<std::string>& arguments) override;

    // Number of the host's DOS code page: the environment variable KRVWINPR_CODEPAGE, else the value "OEMCP" of the
    // settings key "HKLM\SYSTEM\CurrentControlSet\Control\Nls\CodePage", else the one of the user's locale. A number
    // that is no DOS code page counts as none.
    int dosCodePageNumber();
    const CodePage& codePage();

private:
    int screenDpi();
    void askScreen(std::chrono::milliseconds limit);
    std::string nativePath(const std::string& path);

    int argumentCount_;
    const char* const* arguments_;
    platform::SettingsStore& settings_;
    std::optional<runtime::Locale> locale_;
    std::optional<int> codePageNumber_;
    std::optional<CodePage> codePage_;
    std::optional<int> screenDpi_;
    Starter starter_;
};

}  // namespace platform_linux
