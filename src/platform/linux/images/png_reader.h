// A PNG file that libpng reads from memory.
#pragma once

#include <png.h>

#include <cstring>
#include <new>
#include <string_view>
#include <vector>

#include "pictures/colors.h"
#include "pictures/foreign_picture.h"
#include "platform/linux/images/guarded.h"

namespace platform_linux::images {

// As in the file; or so that a Picture can have them: sixteen bits become eight, and colours of which one is
// transparent get an alpha channel, shades of grey eight bits as well.
enum class PngPixels { asInFile, asShown };

// errInvalidPicture for damaged files.
class PngReader {
public:
    explicit PngReader(std::string_view content)
        : rest_(content),
          png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning)),
          info_(png_ != nullptr ? png_create_info_struct(png_) : nullptr) {
        if (info_ == nullptr) {
            png_destroy_read_struct(&png_, &info_, nullptr);
            throw std::bad_alloc();
        }
    }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    void readHeader(PngPixels pixels) {
        check(completes(jump_, [this, pixels] {
            png_set_read_fn(png_, this, onRead);
            png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // its size has been checked
            png_read_info(png_, info_);
            if (pixels == PngPixels::asShown) {
                transform();
            }
            png_set_interlace_handling(png_);
            png_read_update_info(png_, info_);
        }));
    }
    int channels() const { return png_get_channels(png_, info_); }
    std::size_t rowBytes() const { return png_get_rowbytes(png_, info_); }

    std::vector<platform::Color> palette(int bits) const {
        std::vector<platform::Color> result(std::size_t{1} << bits);
        png_color* colors = nullptr;
        int count = 0;
        png_get_PLTE(png_, info_, &colors, &count);
        png_byte* opacities = nullptr;
        int opacityCount = 0;
        png_get_tRNS(png_, info_, &opacities, &opacityCount, nullptr);
        for (std::size_t i = 0; i < result.size() && i < static_cast<std::size_t>(count); ++i) {
            const bool solid = opacities == nullptr || i >= static_cast<std::size_t>(opacityCount);
            const platform::Color color{colors[i].red, colors[i].green, colors[i].blue};
            result[i] = pictures::onWhite(color, solid ? std::uint8_t{255} : opacities[i]);
        }
        return result;
    }

    // All rows, one behind the other, and whatever follows them.
    void readRows(std::vector<std::uint8_t>& raster, std::int64_t height) {
        std::vector<png_bytep> rows;
        for (std::int64_t y = 0; y < height; ++y) {
            rows.push_back(raster.data() + static_cast<std::size_t>(y) * rowBytes());
        }
        check(completes(jump_, [this, first = rows.data()] {
            png_read_image(png_, first);
            png_read_end(png_, nullptr);
        }));
    }

    png_uint_32 width() const { return png_get_image_width(png_, info_); }
    png_uint_32 height() const { return png_get_image_height(png_, info_); }
    int bitDepth() const { return png_get_bit_depth(png_, info_); }
    int colorType() const { return png_get_color_type(png_, info_); }

private:
    void transform() {
        png_set_scale_16(png_);
        const int type = png_get_color_type(png_, info_);
        if (type != PNG_COLOR_TYPE_PALETTE && png_get_valid(png_, info_, PNG_INFO_tRNS) != 0) {
            png_set_expand_gray_1_2_4_to_8(png_);
            png_set_tRNS_to_alpha(png_);
        }
    }
    [[noreturn]] static void onError(png_structp png, png_const_charp) {
        std::longjmp(static_cast<PngReader*>(png_get_error_ptr(png))->jump_, 1);
    }
    static void onWarning(png_structp, png_const_charp) {}
    static void onRead(png_structp png, png_bytep to, std::size_t count) {
        std::string_view& rest = static_cast<PngReader*>(png_get_io_ptr(png))->rest_;
        if (count > rest.size()) {
            png_error(png, "");
        }
        std::memcpy(to, rest.data(), count);
        rest.remove_prefix(count);
    }
    static void check(bool completed) {
        if (!completed) {
            pictures::refuseDamaged(pictures::ForeignKind::png);
        }
    }

    std::string_view rest_;
    std::jmp_buf jump_{};
    png_structp png_;
    png_infop info_;
};

}  // namespace platform_linux::images
