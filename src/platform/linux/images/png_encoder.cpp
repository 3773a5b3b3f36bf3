#include <png.h>

#include <cmath>
#include <vector>

#include "pictures/colors.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/guarded.h"
#include "runtime/error.h"

namespace platform_linux::images {

namespace {

using platform::Picture;

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

    std::string write(const Picture& picture) {
        std::vector<png_color> palette;
        for (const platform::Color& color : picture.palette) {
            palette.push_back({color.red, color.green, color.blue});
        }
        if (!completes(jump_, [&, this] { writeAll(picture, palette.data()); })) {
            throw std::bad_alloc();  // nothing else can go wrong in memory
        }
        return std::move(result_);
    }

private:
    void writeAll(const Picture& picture, const png_color* palette) {
        png_set_write_fn(png_, this, onWrite, nullptr);
        png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
        const int bits = picture.bitsPerPixel;
        const bool grey = bits <= 8 && picture.palette == pictures::greyPalette(bits);
        const int type = bits == 24 ? PNG_COLOR_TYPE_RGB : grey ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_PALETTE;
        png_set_IHDR(png_, info_, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height),
                     bits == 24 ? 8 : bits, type, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        if (type == PNG_COLOR_TYPE_PALETTE) {
            png_set_PLTE(png_, info_, palette, static_cast<int>(picture.palette.size()));
        }
        if (picture.dpiX > 0 && picture.dpiY > 0) {
            png_set_pHYs(png_, info_, perMetre(picture.dpiX), perMetre(picture.dpiY), PNG_RESOLUTION_METER);
        }
        png_write_info(png_, info_);
        for (int y = 0; y < picture.height; ++y) {
            png_write_row(png_, picture.pixels.data() + static_cast<std::size_t>(y) * picture.stride());
        }
        png_write_end(png_, info_);
    }

    static png_uint_32 perMetre(double dpi) {
        constexpr double metresPerInch = 0.0254;
        return static_cast<png_uint_32>(std::lround(dpi / metresPerInch));
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

std::string encodePng(const Picture& picture) { return Writer().write(picture); }

}  // namespace platform_linux::images
