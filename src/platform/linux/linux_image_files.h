// The port ImageFiles on Linux.
#pragma once

#include "platform/image_files.h"

namespace platform_linux {

class LinuxImageFiles : public platform::ImageFiles {
public:
    platform::Picture decode(std::string_view content) override;
    std::string encode(const platform::Picture& picture, std::string_view original) override;
};

}  // namespace platform_linux
