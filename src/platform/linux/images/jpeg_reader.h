// A JPEG file that libjpeg reads from memory.
#pragma once

#include <string_view>

#include "platform/linux/images/jpeg_errors.h"

namespace platform_linux::images {

class JpegReader {
public:
    explicit JpegReader(std::string_view content) {
        info_.err = errors_.manager();
        run([&, this] {
            jpeg_create_decompress(&info_);
            jpeg_mem_src(&info_, reinterpret_cast<const unsigned char*>(content.data()), content.size());
        });
    }
    JpegReader(const JpegReader&) = delete;
    JpegReader& operator=(const JpegReader&) = delete;
    ~JpegReader() { jpeg_destroy_decompress(&info_); }

    jpeg_decompress_struct& info() { return info_; }

    // As JpegErrors::run().
    template <typename Step>
    void run(const Step& step) {
        errors_.run(step);
    }

private:
    JpegErrors errors_;
    jpeg_decompress_struct info_{};
};

}  // namespace platform_linux::images
