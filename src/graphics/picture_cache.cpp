#include "graphics/picture_cache.h"

namespace graphics {

std::shared_ptr<CheckedPicture> PictureCache::load(const std::string& path, Colors colors) {
    std::weak_ptr<CheckedPicture>& known = loaded_[{path, colors}];
    if (auto picture = known.lock()) {
        return picture;
    }
    auto picture = std::make_shared<CheckedPicture>(sources_, path, colors);
    known = picture;
    return picture;
}

}  // namespace graphics
