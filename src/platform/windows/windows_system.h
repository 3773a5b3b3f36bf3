// The port System on Windows.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system.h"
#include "platform/windows/starter.h"

namespace platform_windows {

// The system's code page is the user's ANSI code page, the host's DOS code page the OEM one. The current directory is
// asked for whenever it is needed, the locale once.
class WindowsSystem final : public platform::System {
public:
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
    int screenDpiX() override;
    int screenDpiY() override;
    bool screenAnswers() override { return true; }
    void sleep(int milliseconds) override;
    std::int64_t elapsedMilliseconds() override;
    void tellStarter() noexcept override { starter_.tellCompletion(); }
    std::string shellCommand(const std::string& folder, const std::vector<std::string>& arguments) override;

private:
    // A path as the host has it, or the program.
    std::wstring native(const std::string& path) const;

    std::optional<runtime::Locale> locale_;
    Starter starter_;
};

// What stands behind the program's name in a command line as the system hands it over. The name goes to its closing
// quote where it begins with one, otherwise to the first blank or tab; the rest is as it was written.
std::wstring_view commandLineTail(std::wstring_view commandLine);

}  // namespace platform_windows
