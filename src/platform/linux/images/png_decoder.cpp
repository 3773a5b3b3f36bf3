#include <png.h>

#include <cstring>
#include <vector>

#include "pictures/colors.h"
#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/guarded.h"

namespace platform_linux::images {

namespace {

using pictures::ForeignPicture;
using platform::Color;
using platform::Picture;

class Reader {
public:
    explicit Reader(std::string_view content)
        : rest_(content),
          png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, this, onError, onWarning)),
          info_(png_ != nullptr ? png_create_info_struct(png_) : nullptr) {
        if (info_ == nullptr) {
            png_destroy_read_struct(&png_, &info_, nullptr);
            throw std::bad_alloc();
        }
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    // Sixteen bits become eight; shades of grey of which one is transparent become eight bits with an alpha channel.
    void readHeader() {
        check(completes(jump_, [this] {
            png_set_read_fn(png_, this, onRead);
            png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // its size has been checked
            png_read_info(png_, info_);
            png_set_scale_16(png_);
            const int type = png_get_color_type(png_, info_);
            if (type != PNG_COLOR_TYPE_PALETTE && png_get_valid(png_, info_, PNG_INFO_tRNS) != 0) {
                png_set_expand_gray_1_2_4_to_8(png_);
                png_set_tRNS_to_alpha(png_);
            }
            png_set_interlace_handling(png_);
            png_read_update_info(png_, info_);
        }));
    }
    int channels() const { return png_get_channels(png_, info_); }
    std::size_t rowBytes() const { return png_get_rowbytes(png_, info_); }

    std::vector<Color> palette(int bits) const {
        std::vector<Color> result(std::size_t{1} << bits);
        png_color* colors = nullptr;
        int count = 0;
        png_get_PLTE(png_, info_, &colors, &count);
        png_byte* opacities = nullptr;
        int opacityCount = 0;
        png_get_tRNS(png_, info_, &opacities, &opacityCount, nullptr);
        for (std::size_t i = 0; i < result.size() && i < static_cast<std::size_t>(count); ++i) {
            const bool solid = opacities == nullptr || i >= static_cast<std::size_t>(opacityCount);
            const Color color{colors[i].red, colors[i].green, colors[i].blue};
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

private:
    [[noreturn]] static void onError(png_structp png, png_const_charp) {
        std::longjmp(static_cast<Reader*>(png_get_error_ptr(png))->jump_, 1);
    }
    static void onWarning(png_structp, png_const_charp) {}
    static void onRead(png_structp png, png_bytep to, std::size_t count) {
        std::string_view& rest = static_cast<Reader*>(png_get_io_ptr(png))->rest_;
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

// Pixels of one or three channels and an opacity become such without.
void layOnWhite(const std::vector<std::uint8_t>& raster, int channels, Picture& picture) {
    const std::size_t colors = static_cast<std::size_t>(channels) - 1;
    const std::uint8_t* from = raster.data();
    for (std::size_t i = 0; i < picture.pixels.size(); i += colors, from += channels) {
        for (std::size_t channel = 0; channel < colors; ++channel) {
            picture.pixels[i + channel] = pictures::onWhite(from[channel], from[colors]);
        }
    }
}

}  // namespace

Picture decodePng(const ForeignPicture& file, std::string_view content) {
    Reader reader(content);
    reader.readHeader();
    Picture picture = pictures::makePicture(file.width, file.height, file.bitsPerPixel);
    if (file.palette) {
        picture.palette = reader.palette(file.bitsPerPixel);
    } else if (file.bitsPerPixel <= 8) {
        picture.palette = pictures::greyPalette(file.bitsPerPixel);
    }
    const int channels = reader.channels();
    if (channels == 2 || channels == 4) {
        std::vector<std::uint8_t> raster(reader.rowBytes() * static_cast<std::size_t>(file.height));
        reader.readRows(raster, file.height);
        layOnWhite(raster, channels, picture);
    } else if (reader.rowBytes() == picture.stride()) {
        reader.readRows(picture.pixels, file.height);
    } else {
        pictures::refuseDamaged(file.kind);
    }
    return picture;
}

}  // namespace platform_linux::images
