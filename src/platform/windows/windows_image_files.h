// The port ImageFiles on Windows.
#pragma once

#include "platform/image_files.h"

namespace platform_windows {

class WindowsImageFiles : public platform::ImageFiles {
public:
    platform::Picture decode(std::string_view content) override;
    std::string encode(const platform::Picture& picture, std::string_view original) override;
};

}  // namespace platform_windows
