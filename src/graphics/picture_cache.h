// Loads picture files for one job and shares what is loaded more than once.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "platform/image_files.h"
#include "platform/picture.h"
#include "platform/system.h"

namespace graphics {

// decodePicture() for the content of a file; what it throws names the file.
platform::Picture decodeFile(const std::string& path, std::string_view content, platform::ImageFiles& others);

enum class Colors { asInFile, inverted };

// One file wanted several times, with the same colours, is one Picture: it is decoded once, takes its memory once and
// is stored once in a document. The cache itself keeps no picture alive.
class PictureCache {
public:
    // Both are borrowed.
    PictureCache(platform::System& system, platform::ImageFiles& others) : system_(system), others_(others) {}

    // The first picture of a file, the path as platform::System takes it. Throws what readFile() and decodeFile()
    // throw.
    std::shared_ptr<const platform::Picture> load(const std::string& path, Colors colors = Colors::asInFile);

private:
    using Key = std::pair<std::string, Colors>;

    platform::System& system_;
    platform::ImageFiles& others_;
    std::map<Key, std::weak_ptr<const platform::Picture>> loaded_;
};

}  // namespace graphics
