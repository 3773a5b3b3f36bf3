#include "graphics/picture_cache.h"

#include <new>

#include "pictures/picture_file.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace graphics {

platform::Picture decodeFile(const std::string& path, std::string_view content, platform::ImageFiles& others) {
    try {
        return pictures::decodePicture(content, others);
    } catch (const runtime::Error& error) {
        const std::string reason = error.detail().empty() ? "" : "; " + error.detail();
        throw runtime::Error(error.number(), error.source(), error.description(),
                             "'" + runtime::shown(path) + "'" + reason);
    } catch (const std::bad_alloc&) {
        throw runtime::Error(runtime::errOutOfMemory, "Das Bild '" + runtime::shown(path) + "' ist zu groß");
    }
}

std::shared_ptr<const platform::Picture> PictureCache::load(const std::string& path, Colors colors) {
    std::weak_ptr<const platform::Picture>& known = loaded_[{path, colors}];
    if (auto picture = known.lock()) {
        return picture;
    }
    const auto picture = std::make_shared<platform::Picture>(decodeFile(path, system_.readFile(path), others_));
    if (colors == Colors::inverted) {
        pictures::invert(*picture);
    }
    known = picture;
    return picture;
}

}  // namespace graphics
