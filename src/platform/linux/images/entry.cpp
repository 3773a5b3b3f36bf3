#include "platform/linux/images/image_codecs.h"

extern "C" __attribute__((visibility("default"))) std::unique_ptr<platform::ImageFiles> krvwinpr_images();

std::unique_ptr<platform::ImageFiles> krvwinpr_images() {
    return std::make_unique<platform_linux::images::ImageCodecs>();
}
