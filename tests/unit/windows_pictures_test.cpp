// Pictures drawn with GDI, on a bitmap instead of paper.
#include "unit/windows_sheet.h"

namespace platform_windows::print {

namespace {

TEST(GdiPictures, FillTheirBoxAndKeepTheirColoursOrAreGrey) {
    constexpr int scale = 3;
    for (const auto& [bits, color] :
         {std::pair(1, true), {2, true}, {4, true}, {8, true}, {24, true}, {4, false}, {24, false}}) {
        const auto picture = pictureOf(bits);
        const int width = picture->width * scale;
        const int height = picture->height * scale;
        Sheet sheet(color);
        sheet->drawPicture(picture, 10, 20, width, height);
        sheet->drawPicture(picture, 100 + width, 20 + height, -width, -height);
        const Image image = sheet.drawn();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const platform::Color own = support::colorAt(*picture, x / scale, y / scale);
                const std::uint32_t expected = numberOf(color ? own : platform::drawing::greyOf(own));
                ASSERT_EQ(image.at(10 + x, 20 + y), expected) << bits << " bits, " << x << ',' << y;
                ASSERT_EQ(image.at(100 + width - 1 - x, 20 + height - 1 - y), expected) << bits << " bits";
            }
        }
        EXPECT_EQ(std::ssize(image.pixels) - std::count(image.pixels.begin(), image.pixels.end(), white),
                  2 * width * height);
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
        EXPECT_EQ(sheet.drawn().ink(), (Box{31, 0, 31, 76}));
    }
}

// Enlarged so that a pixel is larger than any sheet, and shown where four of them meet.
TEST(GdiPictures, FarBeyondTheSheetAreCut) {
    const auto picture = pictureOf(8);
    constexpr int scale = 15'000'000;
    for (const int sign : {1, -1}) {
        Sheet sheet;
        sheet->drawPicture(picture, 300 - sign * 7 * scale, 100 - sign * 2 * scale, sign * 13 * scale,
                           sign * 5 * scale);
        const Image image = sheet.drawn();
        for (const int right : {-1, 1}) {
            for (const int down : {-1, 1}) {
                EXPECT_EQ(image.at(300 + sign * right * 10, 100 + sign * down * 10),
                          numberOf(support::colorAt(*picture, right > 0 ? 7 : 6, down > 0 ? 2 : 1)));
            }
        }
        EXPECT_EQ(image.ink(), (Box{-marginX, -marginY, sheetWidth - marginX - 1, sheetHeight - marginY - 1}));
    }
    Sheet sheet;
    for (const int distant : {INT_MIN, INT_MAX}) {
        sheet->drawPicture(picture, 0, distant, INT_MAX, INT_MIN);
        sheet->drawPicture(picture, 0, 0, distant, distant);
    }
    sheet.drawn();
}

}  // namespace

}  // namespace platform_windows::print
