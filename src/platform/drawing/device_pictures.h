// What a device made of the pictures of a document, each once however many pages show it.
#pragma once

#include <map>
#include <memory>
#include <utility>

#include "platform/drawing/grey.h"
#include "platform/picture.h"

namespace platform::drawing {

// Keeps the pictures, so that an address means the same one to the end of the document.
template <typename Made>
class DevicePictures {
public:
    // make(grey) is called for a picture not known yet; grey: it is to be turned into shades of grey, because the page
    // has no colour and the picture has.
    template <typename Make>
    const Made& get(const std::shared_ptr<const Picture>& picture, bool color, Make make) {
        const bool grey = !color && !isGrey(*picture);
        const auto known = known_.find({picture, grey});
        if (known != known_.end()) {
            return known->second;
        }
        return known_.emplace(std::pair(picture, grey), make(grey)).first->second;
    }

private:
    std::map<std::pair<std::shared_ptr<const Picture>, bool>, Made> known_;
};

}  // namespace platform::drawing
