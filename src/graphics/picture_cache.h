// Loads picture files for one job and shares what is loaded more than once.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>

#include "graphics/checked_picture.h"

namespace graphics {

// One file wanted several times, with the same colours, is one picture: it is checked and decoded once, takes its
// memory once and is stored once in a document. The cache itself keeps no picture alive, and must outlive those that it
// gives.
class PictureCache {
public:
    // Both are borrowed.
    PictureCache(platform::System& system, platform::ImageFiles& others) : sources_{system, others} {}
    PictureCache(const PictureCache&) = delete;
    PictureCache& operator=(const PictureCache&) = delete;

    // The first picture of a file, the path as platform::System takes it. Throws what CheckedPicture throws when made.
    std::shared_ptr<CheckedPicture> load(const std::string& path, Colors colors = Colors::asInFile);

private:
    using Key = std::pair<std::string, Colors>;

    PictureSources sources_;
    std::map<Key, std::weak_ptr<CheckedPicture>> loaded_;
};

}  // namespace graphics
