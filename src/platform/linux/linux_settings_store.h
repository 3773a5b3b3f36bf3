// The port SettingsStore on Linux: one text file (settings_file.h) in the user's configuration folder.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/settings_file.h"
#include "platform/settings_store.h"

namespace platform_linux {

// The file is read when first asked for. What is set is kept in memory up to commit(), which reads the file again under
// a lock ("<file>.lock", beside it), changes only the lines that need it and replaces the file as a whole; setting what
// is there already writes nothing. A link is followed. A file that is there but cannot be read is never replaced.
class LinuxSettingsStore final : public platform::SettingsStore {
public:
    static constexpr std::chrono::milliseconds usualLockWait{2000};

    // An empty path stands for no file: everything that is set is gone with the process.
    explicit LinuxSettingsStore(std::string path, std::chrono::milliseconds lockWait = usualLockWait);
    LinuxSettingsStore(const LinuxSettingsStore&) = delete;
    LinuxSettingsStore& operator=(const LinuxSettingsStore&) = delete;
    ~LinuxSettingsStore() override;

    // "KRVWinPr/settings.ini" in $XDG_CONFIG_HOME or, where that names no folder, in ".config" of the user's home.
    static std::string usualPath();

    bool keyExists(platform::SettingsRoot root, std::string_view key) override;
    std::optional<platform::SettingsValue> value(platform::SettingsRoot root, std::string_view key,
                                                 std::string_view name) override;
    bool setText(platform::SettingsRoot root, std::string_view key, std::string_view name,
                 std::string_view text) override;
    // Waits for others who are writing; all calls together no longer than the limit. A file system without locks is
    // written without.
    bool commit() override;
    std::string place() override { return path_; }

private:
    struct Setting {
        platform::SettingsRoot root;
        std::string key;
        std::string name;
        std::string text;
    };

    SettingsFile& file();
    bool commitTo(const std::string& path);

    std::string path_;
    std::chrono::milliseconds lockWait_;  // what is left of it
    std::optional<SettingsFile> file_;
    bool readable_ = true;
    std::vector<Setting> pending_;  // in the order in which they were set
};

}  // namespace platform_linux
