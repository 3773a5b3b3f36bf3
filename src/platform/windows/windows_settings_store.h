// The port SettingsStore on Windows: the registry.
#pragma once

#include <utility>

#include "platform/settings_store.h"

namespace platform_windows {

// Every call opens and closes its key, and asks for the same rights whether it reads or writes. What is set is in the
// registry at once; commit() says whether all of it got there since it was last called.
class WindowsSettingsStore final : public platform::SettingsStore {
public:
    bool keyExists(platform::SettingsRoot root, std::string_view key) override;

    // Text ends at its first NUL, whether or not whoever wrote it put one there.
    std::optional<platform::SettingsValue> value(platform::SettingsRoot root, std::string_view key,
                                                 std::string_view name) override;
    bool setText(platform::SettingsRoot root, std::string_view key, std::string_view name,
                 std::string_view text) override;
    bool commit() override { return !std::exchange(failed_, false); }
    std::string place() override { return "Registrierung"; }

private:
    bool failed_ = false;
};

}  // namespace platform_windows
