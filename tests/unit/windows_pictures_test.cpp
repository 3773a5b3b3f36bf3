// Pictures drawn with GDI, on a bitmap instead of paper.
#include "pictures/picture_size.h"
#include "unit/windows_sheet.h"

namespace platform_windows::print {

namespace {

TEST(GdiPictures, FillTheirBoxAndKeepTheirColours) {
    constexpr int scale = 3;
    for (const int bits : {1, 2, 4, 8, 24}) {
        const auto picture = pictureOf(bits);
        const int width = picture->width * scale;
        const int height = picture->height * scale;
        Sheet sheet;
        sheet->drawPicture(picture, 10, 20, width, height);
        sheet->drawPicture(picture, 100 + width, 20 + height, -width, -height);
        sheet->drawPicture(picture, 300, 20, 0, height);
        sheet->drawPicture(picture, sheetWidth, 20, width, height);
        const auto image = sheet.drawn();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const std::uint32_t expected = pixelAt(*picture, x / scale, y / scale);
                ASSERT_EQ(Sheet::at(image, 10 + x, 20 + y), expected) << bits << " bits, " << x << ',' << y;
                ASSERT_EQ(Sheet::at(image, 100 + width - 1 - x, 20 + height - 1 - y), expected) << bits << " bits";
            }
        }
        const auto inked = static_cast<int>(image.size() - std::count(image.begin(), image.end(), white));
        EXPECT_EQ(inked, 2 * width * height);
    }
}

TEST(GdiPictures, ThinLinesOfTwoColoursStayWhenShrunk) {
    for (const bool blackFirst : {false, true}) {
        auto picture = std::make_shared<platform::Picture>(pictures::makePicture(600, 600, 1));
        picture->palette[blackFirst ? 1 : 0] = {255, 255, 255};
        std::fill(picture->pixels.begin(), picture->pixels.end(), blackFirst ? 0xFF : 0);
        for (std::size_t row = 0; row < 600; ++row) {
            picture->pixels[row * picture->stride() + 30] ^= 0x10;  // the column 243
        }
        Sheet sheet;
        sheet->drawPicture(picture, 0, 0, 77, 77);
        EXPECT_EQ(Sheet::inkOf(sheet.drawn()), (Box{31, 0, 31, 76}));
    }
}

// Enlarged so that a pixel is larger than any sheet, and shown where four of them meet.
TEST(GdiPictures, FarBeyondTheSheetAreCut) {
    const auto picture = pictureOf(8);
    constexpr int scale = 15'000'000;
    for (const bool mirrored : {false, true}) {
        Sheet sheet;
        const int sign = mirrored ? -1 : 1;
        sheet->drawPicture(picture, 300 - sign * 7 * scale, 100 - sign * 2 * scale, sign * 13 * scale,
                           sign * 5 * scale);
        const auto image = sheet.drawn();
        EXPECT_EQ(Sheet::at(image, 300 - sign * 10, 100 - sign * 10), pixelAt(*picture, 6, 1));
        EXPECT_EQ(Sheet::at(image, 300 + sign * 10, 100 - sign * 10), pixelAt(*picture, 7, 1));
        EXPECT_EQ(Sheet::at(image, 300 - sign * 10, 100 + sign * 10), pixelAt(*picture, 6, 2));
        EXPECT_EQ(Sheet::at(image, 300 + sign * 10, 100 + sign * 10), pixelAt(*picture, 7, 2));
        EXPECT_EQ(Sheet::inkOf(image), (Box{-marginX, -marginY, sheetWidth - marginX - 1, sheetHeight - marginY - 1}));
    }
    Sheet sheet;
    for (const int distant : {INT_MIN, INT_MAX}) {
        sheet->drawPicture(picture, distant, 0, 10, 10);
        sheet->drawPicture(picture, 0, distant, INT_MAX, INT_MIN);
        sheet->drawPicture(picture, 0, 0, distant, distant);
    }
    EXPECT_EQ(sheet->endPage(), DWORD{ERROR_SUCCESS});
}

}  // namespace

}  // namespace platform_windows::print
