#include <vector>

#include "pictures/colors.h"
#include "pictures/picture_size.h"
#include "platform/linux/images/codecs.h"
#include "platform/linux/images/guarded.h"
#include "platform/linux/images/jpeg_reader.h"

namespace platform_linux::images {

namespace {

using platform::Picture;

// A row of four inks; Adobe's programs write them as the paper left over.
void mixInks(const std::vector<std::uint8_t>& row, bool inverted, std::uint8_t* to) {
    const std::uint8_t flip = inverted ? 255 : 0;
    const auto ink = [&](std::size_t i) { return static_cast<std::uint8_t>(row[i] ^ flip); };
    for (std::size_t i = 0; i + 3 < row.size(); i += 4) {
        const platform::Color color = pictures::fromInks(ink(i), ink(i + 1), ink(i + 2), ink(i + 3));
        *to++ = color.red;
        *to++ = color.green;
        *to++ = color.blue;
    }
}

}  // namespace

Picture decodeJpeg(const pictures::ForeignPicture& file, std::string_view content) {
    JpegReader reader(content);
    jpeg_decompress_struct& info = reader.info();
    reader.run([&] {
        jpeg_read_header(&info, TRUE);
        info.out_color_space = info.num_components == 1 ? JCS_GRAYSCALE : info.num_components == 4 ? JCS_CMYK : JCS_RGB;
        jpeg_start_decompress(&info);
    });
    Picture picture = pictures::makePicture(file.stored.width, file.stored.height, file.stored.bitsPerPixel);
    const bool inks = file.inks;
    if (info.output_width != static_cast<unsigned>(picture.width) ||
        info.output_height != static_cast<unsigned>(picture.height) ||
        info.output_components != (inks ? 4 : picture.bitsPerPixel / 8)) {
        pictures::refuseDamaged(file.kind);
    }
    if (picture.bitsPerPixel == 8) {
        picture.palette = pictures::greyPalette(8);
    }
    std::vector<std::uint8_t> inkRow(inks ? static_cast<std::size_t>(picture.width) * 4 : 0);
    reader.run([&] {
        while (info.output_scanline < info.output_height) {
            std::uint8_t* to = picture.pixels.data() + info.output_scanline * picture.stride();
            JSAMPROW row = inks ? inkRow.data() : to;
            jpeg_read_scanlines(&info, &row, 1);
            if (inks) {
                mixInks(inkRow, info.saw_Adobe_marker != 0, to);
            }
        }
        jpeg_finish_decompress(&info);
    });
    if (!inks) {
        picture.jpeg = content;
    }
    return picture;
}

}  // namespace platform_linux::images
