#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "platform/linux/images/codecs.h"
#include "platform/linux/images/jpeg_reader.h"

namespace platform_linux::images {

namespace {

using platform::Picture;

class Writer {
public:
    Writer() {
        info_.err = errors_.manager();
        run([this] {
            jpeg_create_compress(&info_);
            jpeg_mem_dest(&info_, &bytes_, &size_);
        });
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() {
        jpeg_destroy_compress(&info_);
        std::free(bytes_);
    }

    jpeg_compress_struct& info() { return info_; }
    std::string_view result() const { return {reinterpret_cast<const char*>(bytes_), size_}; }

    template <typename Step>
    void run(const Step& step) {
        errors_.run(step);
    }

private:
    JpegErrors errors_;
    jpeg_compress_struct info_{};
    unsigned char* bytes_ = nullptr;
    unsigned long size_ = 0;
};

// A divisor of 0 is none, yet the library takes it over.
void mendQuantisation(jpeg_compress_struct& info) {
    for (JQUANT_TBL* table : info.quant_tbl_ptrs) {
        if (table != nullptr) {
            std::replace(std::begin(table->quantval), std::end(table->quantval), UINT16{0}, UINT16{1});
        }
    }
}

// Colours of inks, which the picture no longer has, are written as others are.
void chooseCoding(const jpeg_decompress_struct& original, int components, jpeg_compress_struct& info) {
    constexpr int quality = 90;
    info.input_components = components;
    info.in_color_space = components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    if (original.num_components == components) {
        jpeg_copy_critical_parameters(const_cast<jpeg_decompress_struct*>(&original), &info);
        info.input_components = components;
        info.in_color_space = components == 1 ? JCS_GRAYSCALE : JCS_RGB;
        mendQuantisation(info);
    } else {
        jpeg_set_defaults(&info);
        jpeg_set_quality(&info, quality, TRUE);
    }
    info.arith_code = original.arith_code;
    if (original.progressive_mode != 0) {
        jpeg_simple_progression(&info);
    } else {
        info.optimize_coding = TRUE;
    }
}

}  // namespace

std::string encodeJpeg(const Picture& picture, std::string_view original) {
    JpegReader reader(original);
    reader.run([&] { jpeg_read_header(&reader.info(), TRUE); });
    Writer writer;
    jpeg_compress_struct& info = writer.info();
    writer.run([&] {
        info.image_width = static_cast<JDIMENSION>(picture.width);
        info.image_height = static_cast<JDIMENSION>(picture.height);
        chooseCoding(reader.info(), picture.bitsPerPixel / 8, info);
        jpeg_start_compress(&info, TRUE);
        while (info.next_scanline < info.image_height) {
            // The library does not change what it is given to write.
            auto* row = const_cast<JSAMPROW>(picture.pixels.data() + info.next_scanline * picture.stride());
            jpeg_write_scanlines(&info, &row, 1);
        }
        jpeg_finish_compress(&info);
    });
    return std::string(writer.result());
}

}  // namespace platform_linux::images
