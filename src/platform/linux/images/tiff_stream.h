// A TIFF file in memory, as libtiff reads and writes it.
#pragma once

#include <tiffio.h>

#include <memory>
#include <string>
#include <string_view>

namespace platform_linux::images {

struct CloseTiff {
    void operator()(TIFF* tiff) const { TIFFClose(tiff); }
};
using OwnedTiff = std::unique_ptr<TIFF, CloseTiff>;

// Bytes of a file: given ones for reading, a copy of its own for changing them. Must outlive what is opened on it.
class TiffStream {
public:
    enum class Use { read, change };

    TiffStream(std::string_view content, Use use)
        : content_(content), written_(use == Use::change ? content : std::string_view()), reading_(use == Use::read) {}
    TiffStream(const TiffStream&) = delete;
    TiffStream& operator=(const TiffStream&) = delete;

    // Nothing where the library refuses the file.
    OwnedTiff open();

    // The changed file, once it has been closed.
    std::string takeWritten() { return std::move(written_); }
    // Whether there was no memory for all that was to be written.
    bool isFull() const { return full_; }

private:
    static tmsize_t onRead(thandle_t handle, void* to, tmsize_t count);
    static tmsize_t onWrite(thandle_t handle, void* from, tmsize_t count);
    static toff_t onSeek(thandle_t handle, toff_t offset, int from);
    static int onClose(thandle_t) { return 0; }
    static toff_t onSize(thandle_t handle);
    static int onMap(thandle_t handle, void** base, toff_t* size);
    static void onUnmap(thandle_t, void*, toff_t) {}

    std::string_view bytes() const { return reading_ ? content_ : std::string_view(written_); }
    void put(std::string_view bytes);

    std::string_view content_;
    std::string written_;
    toff_t position_ = 0;
    bool reading_ = false;
    bool full_ = false;
};

}  // namespace platform_linux::images
