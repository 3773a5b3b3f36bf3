#include "graphics/checked_picture.h"

#include <functional>
#include <utility>

#include "graphics/picture_reading.h"
#include "pictures/picture_file.h"
#include "runtime/error.h"

namespace graphics {

namespace {

constexpr std::hash<std::string> checksumOf;

}  // namespace

CheckedPicture::CheckedPicture(PictureSources& sources, std::string path, Colors colors)
    : sources_(sources), path_(std::move(path)), colors_(colors) {
    std::string content = readPictureFile(sources_.system, path_);
    info_ = naming(path_, [&] { return pictures::inspectPicture(content, sources_.others); });
    size_ = content.size();
    if (size_ <= mostKeptBytes) {
        content_ = std::move(content);
    } else {
        checksum_ = checksumOf(content);
    }
}

const std::shared_ptr<const platform::Picture>& CheckedPicture::picture() {
    if (!picture_) {
        picture_ = naming(path_, [this] { return decode(); });
    }
    return picture_;
}

std::string CheckedPicture::takeContent() {
    if (content_) {
        return *std::exchange(content_, std::nullopt);
    }
    std::string content = readPictureFile(sources_.system, path_);
    if (content.size() != size_ || checksumOf(content) != checksum_) {
        throw runtime::Error(runtime::errPathFileAccess,
                             "Die Datei wurde geändert, nachdem der Auftrag sie geprüft hatte");
    }
    return content;
}

std::shared_ptr<const platform::Picture> CheckedPicture::decode() {
    const std::uint64_t bytes = std::uint64_t{info_.stride()} * static_cast<std::uint64_t>(info_.height);
    if (sources_.decodedBytes + bytes > mostDecodedBytes) {
        throw runtime::Error(runtime::errOutOfMemory, "Mit diesem Bild brauchen die Bilder des Auftrags mehr als " +
                                                          std::to_string(mostDecodedBytes / 1024 / 1024) +
                                                          " MiB. Bitte Bilder verkleinern.");
    }
    const std::string content = takeContent();
    auto picture = std::make_shared<platform::Picture>(pictures::decodePicture(content, sources_.others));
    if (colors_ == Colors::inverted) {
        pictures::invert(*picture);
    }
    sources_.decodedBytes += bytes + picture->jpeg.size();
    return picture;
}

}  // namespace graphics
