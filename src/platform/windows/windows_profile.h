// The port Profile on Windows.
#pragma once

#include <string>

#include "platform/profile.h"

namespace platform_windows {

// The system's own function, asked anew for every key. Bytes of the file are characters of the user's ANSI code page,
// unless the file has the byte-order mark of UTF-16.
class WindowsProfile : public platform::Profile {
public:
    // A native path (files.h).
    explicit WindowsProfile(std::wstring path) : path_(std::move(path)) {}

    // Opens the file once more; what the system's function itself met it does not say.
    std::string failure() override;
    std::string text(std::string_view section, std::string_view key, std::string_view fallback) override;

private:
    std::wstring path_;
};

}  // namespace platform_windows
