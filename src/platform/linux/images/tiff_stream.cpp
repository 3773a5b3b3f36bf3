#include "platform/linux/images/tiff_stream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace platform_linux::images {

namespace {

TiffStream& streamOf(thandle_t handle) { return *static_cast<TiffStream*>(handle); }

}  // namespace

OwnedTiff TiffStream::open() {
    TIFFSetErrorHandler(nullptr);
    TIFFSetWarningHandler(nullptr);
    return OwnedTiff(TIFFClientOpen("", reading_ ? "r" : "r+", this, onRead, onWrite, onSeek, onClose, onSize,
                                    reading_ ? onMap : nullptr, onUnmap));
}

tmsize_t TiffStream::onRead(thandle_t handle, void* to, tmsize_t count) {
    TiffStream& stream = streamOf(handle);
    const std::string_view bytes = stream.bytes();
    const toff_t start = std::min<toff_t>(stream.position_, bytes.size());
    const toff_t done = std::min<toff_t>(static_cast<toff_t>(count), bytes.size() - start);
    std::memcpy(to, bytes.data() + start, done);
    stream.position_ = start + done;
    return static_cast<tmsize_t>(done);
}

tmsize_t TiffStream::onWrite(thandle_t handle, void* from, tmsize_t count) {
    TiffStream& stream = streamOf(handle);
    try {
        stream.put({static_cast<const char*>(from), static_cast<std::size_t>(count)});
    } catch (const std::exception&) {
        stream.full_ = true;
        return -1;
    }
    return count;
}

void TiffStream::put(std::string_view bytes) {
    const auto start = static_cast<std::size_t>(position_);
    written_.resize(std::max(written_.size(), start + bytes.size()));
    std::copy(bytes.begin(), bytes.end(), written_.begin() + static_cast<std::ptrdiff_t>(start));
    position_ = start + bytes.size();
}

toff_t TiffStream::onSeek(thandle_t handle, toff_t offset, int from) {
    TiffStream& stream = streamOf(handle);
    const toff_t base = from == SEEK_SET ? 0 : from == SEEK_CUR ? stream.position_ : stream.bytes().size();
    stream.position_ = base + offset;
    return stream.position_;
}

toff_t TiffStream::onSize(thandle_t handle) { return streamOf(handle).bytes().size(); }

int TiffStream::onMap(thandle_t handle, void** base, toff_t* size) {
    // The library changes only what it has copied.
    const std::string_view bytes = streamOf(handle).content_;
    *base = const_cast<char*>(bytes.data());
    *size = bytes.size();
    return 1;
}

}  // namespace platform_linux::images
