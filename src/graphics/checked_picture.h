// A picture file of a job: its structure is checked when it is loaded, its pixels are there once a page shows them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/image_files.h"
#include "platform/picture.h"
#include "platform/system.h"

namespace graphics {

enum class Colors { asInFile, inverted };

// What the pictures of one job have in common; system and codecs are borrowed.
struct PictureSources {
    platform::System& system;
    platform::ImageFiles& others;
    std::uint64_t decodedBytes = 0;  // of all pictures decoded so far
};

class CheckedPicture {
public:
    // What the decoded pictures of a job may take together: they stay until its end, as a document shows them again.
    static constexpr std::uint64_t mostDecodedBytes = 1024ULL * 1024 * 1024;
    // Files up to this size are kept until they are decoded, so that nobody can change or delete them meanwhile; larger
    // ones are read again.
    static constexpr std::size_t mostKeptBytes = std::size_t{8} * 1024 * 1024;

    // Reads and checks the file; throws what readPictureFile() and pictures::inspectPicture() throw. The sources are
    // borrowed for as long as this lasts.
    CheckedPicture(PictureSources& sources, std::string path, Colors colors);

    // What the decoded picture will have.
    const platform::PictureInfo& info() const { return info_; }

    // The picture, decoded at the first call. Throws what decoding throws, errOutOfMemory where the pictures of the job
    // would take too much together, and errPathFileAccess for a file that has been changed since it was checked. The
    // detail names the file.
    const std::shared_ptr<const platform::Picture>& picture();

private:
    std::string takeContent();
    std::shared_ptr<const platform::Picture> decode();

    PictureSources& sources_;
    std::string path_;
    Colors colors_;
    platform::PictureInfo info_;
    std::size_t size_ = 0;  // of the file, and a checksum
    std::size_t checksum_ = 0;
    std::optional<std::string> content_;  // of a small file that is not decoded yet
    std::shared_ptr<const platform::Picture> picture_;
};

}  // namespace graphics
