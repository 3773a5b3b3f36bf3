#include <vector>

#include "pictures/inversion.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/png_reader.h"

namespace platform_linux::images {

namespace {

class Writer {
public:
    Writer()
        : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning)),
          info_(png_ != nullptr ? png_create_info_struct(png_) : nullptr) {
        if (info_ == nullptr) {
            png_destroy_write_struct(&png_, &info_);
            throw std::bad_alloc();
        }
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png_, &info_); }

    // Not interlaced: rows written one after the other say nothing else than rows in passes.
    std::string write(const PngReader& like, const std::vector<std::uint8_t>& raster) {
        if (!completes(jump_, [&, this] { writeAll(like, raster); })) {
            throw std::bad_alloc();  // nothing else can go wrong in memory
        }
        return std::move(result_);
    }

private:
    void writeAll(const PngReader& like, const std::vector<std::uint8_t>& raster) {
        png_set_write_fn(png_, this, onWrite, nullptr);
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        png_set_IHDR(png_, info_, like.width(), like.height(), like.bitDepth(), like.colorType(), PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png_, info_);
        for (std::size_t at = 0; at < raster.size(); at += like.rowBytes()) {
            png_write_row(png_, raster.data() + at);
        }
        png_write_end(png_, info_);
    }

    static Writer& self(png_structp png) { return *static_cast<Writer*>(png_get_error_ptr(png)); }
    [[noreturn]] static void onError(png_structp png, png_const_charp) { std::longjmp(self(png).jump_, 1); }
    static void onWarning(png_structp, png_const_charp) {}
    static void onWrite(png_structp png, png_bytep bytes, std::size_t count) {
        bool failed = false;
        try {
            self(png).result_.append(reinterpret_cast<const char*>(bytes), count);
        } catch (const std::exception&) {
            failed = true;
        }
        if (failed) {
            png_error(png, "");
        }
    }

    std::string result_;
    std::jmp_buf jump_{};
    png_structp png_;
    png_infop info_;
};

}  // namespace

std::string encodeInvertedPng(std::string_view content) {
    PngReader reader(content);
    reader.readHeader(PngPixels::asInFile);
    std::vector<std::uint8_t> raster(reader.rowBytes() * reader.height());
    reader.readRows(raster, reader.height());
    const auto samples = static_cast<std::size_t>(reader.channels());
    const bool alpha = (reader.colorType() & PNG_COLOR_MASK_ALPHA) != 0;
    pictures::invertSamples(raster.data(), raster.size(),
                            {.samples = samples,
                             .colors = samples - (alpha ? 1 : 0),
                             .bytesPerSample = reader.bitDepth() == 16 ? std::size_t{2} : std::size_t{1}});
    return Writer().write(reader, raster);
}

}  // namespace platform_linux::images
