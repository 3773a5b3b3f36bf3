#include "platform/linux/pdf/picture_collection.h"

#include <algorithm>

#include "platform/linux/pdf/picture_object.h"

namespace platform_linux::pdf {

int PictureCollection::use(const std::shared_ptr<const platform::Picture>& picture, bool color) {
    return resources_.get(picture, color, [&](bool grey) {
        const auto resource = static_cast<int>(objects_.size());
        objects_.push_back(0);
        unwritten_.push_back({picture.get(), grey, resource});
        return resource;
    });
}

void PictureCollection::write(ObjectWriter& writer) {
    for (const Unwritten& entry : unwritten_) {
        objects_[static_cast<std::size_t>(entry.resource)] =
            entry.grey ? writePicture(writer, platform::drawing::greyOf(*entry.picture))
                       : writePicture(writer, *entry.picture);
    }
    unwritten_.clear();
}

void PictureCollection::appendResources(std::string& text) const {
    if (std::all_of(objects_.begin(), objects_.end(), [](int object) { return object == 0; })) {
        return;
    }
    text += "/XObject<<";
    for (std::size_t resource = 0; resource < objects_.size(); ++resource) {
        if (objects_[resource] != 0) {
            text += '/' + pictureResourceName(static_cast<int>(resource)) + ' ';
            appendReference(text, objects_[resource]);
        }
    }
    text += ">>";
}

std::string pictureResourceName(int resource) { return "P" + std::to_string(resource); }

}  // namespace platform_linux::pdf
