// The port UserFiles on Windows: in the user's local application data, which the system keeps from other users.
#pragma once

#include "platform/user_files.h"

namespace platform_windows {

class WindowsUserFiles final : public platform::UserFiles {
public:
    std::vector<std::string> folders(const std::string& name) override;
    void create(const std::string& path, std::string_view content) override;
    void replace(const std::string& path, std::string_view content) override;
    std::vector<std::string> names(const std::string& folder) override;
    std::string read(const std::string& path) override;
    void remove(const std::string& path) noexcept override;
};

}  // namespace platform_windows
