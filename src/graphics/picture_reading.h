// Reading one picture file.
#pragma once

#include <cstdint>
#include <new>
#include <string>

#include "platform/system.h"
#include "runtime/error.h"
#include "runtime/utf8.h"

namespace graphics {

// The largest picture file: an uncompressed one of 32 bits a pixel, were its picture as large as pictures may be.
inline constexpr std::uint64_t mostPictureFileBytes = 768ULL * 1024 * 1024;

// The whole content of a file, measured before it is read. Throws what platform::System::readFile() throws, and
// errInvalidPicture for a file that is too large.
std::string readPictureFile(platform::System& system, const std::string& path);

// The result of some work on a file's picture; what that throws names the file.
template <typename Work>
auto naming(const std::string& path, const Work& work) {
    try {
        return work();
    } catch (const runtime::Error& error) {
        const std::string reason = error.detail().empty() ? "" : "; " + error.detail();
        throw runtime::Error(error.number(), error.source(), error.description(),
                             "'" + runtime::shown(path) + "'" + reason);
    } catch (const std::bad_alloc&) {
        throw runtime::Error(runtime::errOutOfMemory, "Das Bild '" + runtime::shown(path) + "' ist zu groß");
    }
}

}  // namespace graphics
