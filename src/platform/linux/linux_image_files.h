// The port ImageFiles on Linux.
#pragma once

#include <memory>

#include "platform/image_files.h"

namespace platform_linux {

// Everything is done by the module "images", which is loaded at first use. Where that fails, the picture is refused
// with the loader's reason.
class LinuxImageFiles : public platform::ImageFiles {
public:
    platform::Picture decode(std::string_view content) override;
    std::string encode(const platform::Picture& picture, std::string_view original) override;

private:
    platform::ImageFiles& codecs();

    std::unique_ptr<platform::ImageFiles> codecs_;
};

}  // namespace platform_linux
