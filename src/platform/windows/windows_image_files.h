// The port ImageFiles on Windows.
#pragma once

#include <memory>

#include "platform/image_files.h"

namespace platform_windows {

class WicFactory;

// The system's own codecs, asked for when first used and given back with this object; to be used on one thread.
class WindowsImageFiles : public platform::ImageFiles {
public:
    WindowsImageFiles();
    ~WindowsImageFiles() override;

    platform::PictureInfo inspect(std::string_view content) override;
    platform::Picture decode(std::string_view content) override;
    std::string inverted(std::string_view content) override;

private:
    const WicFactory& factory();

    std::unique_ptr<WicFactory> factory_;
};

}  // namespace platform_windows
