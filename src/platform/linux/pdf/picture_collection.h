// The pictures of a document, each written once however many pages show it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/drawing/device_pictures.h"
#include "platform/linux/pdf/object_writer.h"

namespace platform_linux::pdf {

class PictureCollection {
public:
    // The number of a picture among those of the document, for use on the page open. Without colour it is the picture
    // in shades of grey.
    int use(const std::shared_ptr<const platform::Picture>& picture, bool color);

    // Writes what pages used that is not written yet.
    bool anyUnwritten() const { return !unwritten_.empty(); }
    void write(ObjectWriter& writer);

    // Appends the entry of the resource dictionary; nothing if no picture was written.
    void appendResources(std::string& text) const;

private:
    struct Unwritten {
        const platform::Picture* picture = nullptr;  // resources_ keeps it
        bool grey = false;
        int resource = 0;
    };

    platform::drawing::DevicePictures<int> resources_;
    std::vector<Unwritten> unwritten_;
    std::vector<int> objects_;  // of each resource; 0 while it is not written
};

// Name of a picture in the page's resources, behind the slash: "P0".
std::string pictureResourceName(int resource);

}  // namespace platform_linux::pdf
