#include "graphics/picture_reading.h"

namespace graphics {

std::string readPictureFile(platform::System& system, const std::string& path) {
    constexpr std::uint64_t mebibyte = 1024ULL * 1024;
    if (const std::uint64_t size = system.fileSize(path); size > mostPictureFileBytes) {
        throw runtime::Error(runtime::errInvalidPicture,
                             "'" + runtime::shown(path) + "'; Die Datei ist " + std::to_string(size / mebibyte) +
                                 " MiB groß; gelesen werden Bilddateien bis " +
                                 std::to_string(mostPictureFileBytes / mebibyte) + " MiB. Bitte das Bild verkleinern.");
    }
    return system.readFile(path);
}

}  // namespace graphics
