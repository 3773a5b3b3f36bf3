// Pictures in documents, read back with the tools of poppler-utils and with qpdf.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "pictures/picture_size.h"
#include "platform/drawing/grey.h"
#include "platform/linux/pdf/jpeg_header.h"
#include "unit/linux_support.h"
#include "unit/pdf_support.h"
#include "unit/support/pixels.h"

namespace {

using linux_support::TemporaryFile;
using pdf_support::run;
using platform::Color;
using platform::Picture;
using platform_linux::pdf::Document;
using Shared = std::shared_ptr<const Picture>;

constexpr Color black;
constexpr Color white{255, 255, 255};

enum class Colors { ramp, reversed, random };

Shared randomPicture(int bitsPerPixel, Colors colors) {
    std::mt19937 random(static_cast<unsigned>(bitsPerPixel));
    const auto byte = [&random] { return static_cast<std::uint8_t>(random()); };
    auto picture = std::make_shared<Picture>(pictures::makePicture(37, 19, bitsPerPixel));
    std::generate(picture->pixels.begin(), picture->pixels.end(), byte);
    const std::size_t last = picture->palette.size() - 1;
    for (std::size_t index = 0; index < picture->palette.size(); ++index) {
        const auto shade = static_cast<std::uint8_t>((colors == Colors::ramp ? index : last - index) * 255 / last);
        picture->palette[index] = colors == Colors::random ? Color{byte(), byte(), byte()} : Color{shade, shade, shade};
    }
    return picture;
}

void drawAll(platform::Surface& surface, const std::vector<Shared>& pictures) {
    for (const Shared& picture : pictures) {
        surface.drawPicture(picture, 100, 100, 1000, 1000);
    }
}

TEST(PdfPictures, KeepTheirPixelsAndAreStoredOnce) {
    std::vector<Shared> pictures{randomPicture(24, Colors::random)};
    for (const int bits : {1, 2, 4, 8}) {
        for (const Colors colors : {Colors::ramp, Colors::reversed, Colors::random}) {
            pictures.push_back(randomPicture(bits, colors));
        }
    }
    const TemporaryFile file;
    Document document(pdf_support::settings(), file.descriptor());
    auto page = pdf_support::a4Page();
    for (const bool color : {true, true, false}) {
        page.color = color;
        document.setPage(page);
        document.beginPage();
        drawAll(document.surface(), pictures);
        document.endPage();
    }
    document.beginPage();  // given up
    document.surface().drawPicture(randomPicture(8, Colors::random), 0, 0, 10, 10);
    document.finish();
    EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
    // In grey the five pictures in colour once more.
    EXPECT_EQ(run("grep -ac /Subtype/Image " + file.path()), std::to_string(pictures.size() + 5) + "\n");

    const std::string found = run("pdfimages " + file.path() + ' ' + file.path() + " && for each in " + file.path() +
                                  "-*; do ppmtoppm <$each; done");
    const std::string header = "P6\n37 19\n255\n";
    const std::size_t length = header.size() + 37 * 19 * 3;
    ASSERT_EQ(found.size(), 3 * pictures.size() * length);
    for (std::size_t number = 0; number < 3 * pictures.size(); ++number) {
        const Picture& picture = *pictures[number % pictures.size()];
        Picture expected = number >= 2 * pictures.size() ? platform::drawing::greyOf(picture) : picture;
        if (expected.bitsPerPixel == 1 && picture.palette[0] != black) {
            expected.palette = {white, black};  // pdfimages leaves out palettes of two colours
        }
        EXPECT_TRUE(found.substr(number * length, length) == header + support::colorsOf(expected)) << number;
    }
}

std::string segment(char marker, const std::string& content) {
    return std::string("\xFF") + marker + '\0' + static_cast<char>(content.size() + 2) + content;
}

// The header of a picture of 3 by 2 pixels; the letters name the components.
std::string jpeg(const std::string& components, char frame = '\xC0', const std::string& before = {}, char bits = 8) {
    std::string fields = std::string(1, bits) + std::string("\0\2\0\3", 4) + static_cast<char>(components.size());
    for (const char component : components) {
        fields += std::string(1, component) + "\x11" + '\0';
    }
    return "\xFF\xD8" + before + segment('\xDB', "table") + "\xFF" + segment(frame, fields) +
           segment('\xDA', std::string("\0\0", 2)) + "coded\xFF\xD9";
}

const std::string adobe = segment('\xEE', std::string("Adobe\0\x64\0\0\0\0\2", 12));
const std::string jfif = segment('\xE0', std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));

TEST(PdfPictures, PassJpegFilesThroughWhereViewersKnowTheirKind) {
    for (const auto& [file, space] : std::initializer_list<std::pair<std::string, std::string>>{
             {jpeg("1"), "Gray"},
             {jpeg("123"), "RGB"},
             {jpeg("123", '\xC2'), "RGB"},
             {jpeg("RGB", '\xC0', adobe), "RGB"},
             {jpeg("RGB", '\xC0', jfif), "RGB"},
             {jpeg("RGB"), ""},  // the pixels are stored
             {jpeg("1234"), ""},
             {jpeg("12"), ""},
             {jpeg("123", '\xC3'), ""},              // lossless
             {jpeg("123", '\xC9'), ""},              // arithmetic
             {jpeg("123", '\xC0', "", '\x0C'), ""},  // 12 bits
             {"GIF89a", ""},
         }) {
        std::vector<Shared> shown;
        for (const int width : {3, 4}) {  // the second one's file is not its own
            Picture picture = pictures::makePicture(width, 2, file == jpeg("1") ? 8 : 24);
            picture.jpeg = file;
            shown.push_back(std::make_shared<Picture>(picture));
        }
        const TemporaryFile document;
        pdf_support::onePage(document.descriptor(), [&](platform::Surface& surface) { drawAll(surface, shown); });
        const std::string pdf = linux_support::get(document.path());
        const std::string passed = "/ColorSpace/Device" + space + "/Filter/DCTDecode/Length " +
                                   std::to_string(file.size()) + ">>stream\n" + file + "\nendstream";
        EXPECT_EQ(pdf.find(passed) != std::string::npos, !space.empty()) << space;
        EXPECT_EQ(pdf.find("/DCTDecode"), pdf.rfind("/DCTDecode"));
        EXPECT_EQ(pdf.find("/DCTDecode") != std::string::npos, !space.empty());
    }
}

TEST(PdfPictures, JpegHeadersCutOffAnywhereAreNone) {
    std::string whole = jpeg("123", '\xC0', adobe);
    for (std::size_t length = 0; length < whole.find("coded"); ++length) {
        EXPECT_FALSE(platform_linux::pdf::readJpegHeader(whole.substr(0, length))) << length;
    }
    whole[whole.find("\xFF\xC0") + 9] = 4;  // components, of which three are there
    EXPECT_FALSE(platform_linux::pdf::readJpegHeader(whole));
}

}  // namespace
