// The port ImageFiles on Linux.
#pragma once

#include <memory>

#include "platform/image_files.h"

namespace platform_linux {

// Pixels are the module's "images", which is loaded when the first are needed. Where that fails, the picture is refused
// with the loader's reason.
class LinuxImageFiles : public platform::ImageFiles {
public:
    platform::PictureInfo inspect(std::string_view content) override;
    platform::Picture decode(std::string_view content) override;
    std::string inverted(std::string_view content) override;

private:
    platform::ImageFiles& codecs();

    std::unique_ptr<platform::ImageFiles> codecs_;
};

}  // namespace platform_linux
