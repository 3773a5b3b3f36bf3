// The module "images": the port ImageFiles by libpng, libjpeg, libtiff and leptonica (GIF).
#pragma once

#include <memory>

#include "platform/image_files.h"

namespace platform_linux::images {

// The module's entry function.
using ImageFilesFactory = std::unique_ptr<platform::ImageFiles> (*)();

// Throws std::bad_alloc, too.
class ImageCodecs : public platform::ImageFiles {
public:
    platform::PictureInfo inspect(std::string_view content) override;
    platform::Picture decode(std::string_view content) override;
    std::string inverted(std::string_view content) override;
};

}  // namespace platform_linux::images
