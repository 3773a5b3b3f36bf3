// Pictures in documents, read back with the tools of poppler-utils and with qpdf.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "pictures/picture_size.h"
#include "platform/drawing/grey.h"
#include "platform/linux/pdf/document.h"
#include "platform/linux/pdf/jpeg_header.h"
#include "unit/linux_support.h"
#include "unit/pdf_support.h"

namespace {

using linux_support::TemporaryFile;
using pdf_support::run;
using platform::Color;
using platform::Picture;
using platform_linux::pdf::Document;

using Pixels = std::vector<Color>;
using Shared = std::shared_ptr<const Picture>;

constexpr Color black;
constexpr Color white{255, 255, 255};

Color pixelAt(const Picture& picture, int x, int y) {
    const std::uint8_t* row = picture.pixels.data() + picture.stride() * static_cast<std::size_t>(y);
    if (picture.bitsPerPixel == 24) {
        return {row[x * 3], row[x * 3 + 1], row[x * 3 + 2]};
    }
    const int bit = x * picture.bitsPerPixel;
    const int value = row[bit / 8] >> (8 - picture.bitsPerPixel - bit % 8) & ((1 << picture.bitsPerPixel) - 1);
    return picture.palette[static_cast<std::size_t>(value)];
}

Pixels pixelsOf(const Picture& picture) {
    Pixels pixels;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            pixels.push_back(pixelAt(picture, x, y));
        }
    }
    return pixels;
}

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return (std::ostringstream() << file.rdbuf()).str();
}

// A file of the portable formats P4 (bitmap) and P6 (colour), as poppler-utils write them.
struct Raster {
    int width = 0;
    int height = 0;
    Pixels pixels;

    Color at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
};

Raster readRaster(const std::string& path) {
    std::istringstream file(contentOf(path));
    std::string kind;
    Picture picture;
    file >> kind >> picture.width >> picture.height;
    picture.bitsPerPixel = kind == "P4" ? 1 : 24;
    picture.palette = {{255, 255, 255}, {0, 0, 0}};
    if (int most = 0; kind == "P6") {
        file >> most;
    }
    const std::string rows = file.str().substr(static_cast<std::size_t>(file.tellg()) + 1);
    picture.pixels.assign(rows.begin(), rows.end());
    return {picture.width, picture.height, pixelsOf(picture)};
}

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

std::vector<Shared> picturesOfAllKinds() {
    std::vector<Shared> pictures{randomPicture(24, Colors::random)};
    for (const int bits : {1, 2, 4, 8}) {
        for (const Colors colors : {Colors::ramp, Colors::reversed, Colors::random}) {
            pictures.push_back(randomPicture(bits, colors));
        }
    }
    return pictures;
}

void drawAll(Document& document, const std::vector<Shared>& pictures) {
    document.beginPage();
    for (const Shared& picture : pictures) {
        document.surface().drawPicture(picture, 100, 100, 1000, 1000);
    }
    document.endPage();
}

// The pictures extracted to files beside it, in their order.
std::set<std::string> pictureFiles(const TemporaryFile& file) {
    std::set<std::string> paths;
    for (const auto& entry : std::filesystem::directory_iterator(std::filesystem::path(file.path()).parent_path())) {
        if (entry.path() != file.path()) {
            paths.insert(entry.path());
        }
    }
    return paths;
}

TEST(PdfPictures, KeepTheirPixelsAndAreStoredOnce) {
    const std::vector<Shared> pictures = picturesOfAllKinds();
    const TemporaryFile file;
    Document document(pdf_support::settings(), file.descriptor());
    auto page = pdf_support::a4Page();
    document.setPage(page);
    drawAll(document, pictures);
    drawAll(document, pictures);
    page.color = false;
    document.setPage(page);
    drawAll(document, pictures);
    document.beginPage();  // given up
    document.surface().drawPicture(randomPicture(8, Colors::random), 0, 0, 10, 10);
    document.finish();
    EXPECT_NE(run("qpdf --check " + file.path()).find("No syntax or stream encoding errors"), std::string::npos);
    // In grey the five pictures in colour once more.
    EXPECT_EQ(run("grep -ac /Subtype/Image " + file.path()), std::to_string(pictures.size() + 5) + "\n");

    run("pdfimages " + file.path() + ' ' + file.path());
    std::vector<Raster> found;
    for (const auto& path : pictureFiles(file)) {
        found.push_back(readRaster(path));
    }
    ASSERT_EQ(found.size(), 3 * pictures.size());
    for (std::size_t number = 0; number < found.size(); ++number) {
        const Shared& picture = pictures[number % pictures.size()];
        const bool grey = number >= 2 * pictures.size();
        EXPECT_EQ(found[number].width, 37);
        Picture expected = grey ? platform::drawing::greyOf(*picture) : *picture;
        if (expected.bitsPerPixel == 1 && picture->palette[0] != black) {
            expected.palette = {white, black};  // pdfimages leaves out palettes of two colours
        }
        EXPECT_EQ(found[number].pixels, pixelsOf(expected)) << number;
    }

    // Page, number, colour, components, bits a component.
    const std::string list = run("pdfimages -list -l 1 " + file.path() + " | awk 'NR>2{print $6,$7,$8}' | uniq -c");
    EXPECT_EQ(
        std::regex_replace(list, std::regex(" +"), " "),
        " 1 rgb 3 8\n 2 gray 1 1\n 1 index 1 1\n 2 gray 1 2\n 1 index 1 2\n 2 gray 1 4\n 1 index 1 4\n 2 gray 1 8\n"
        " 1 index 1 8\n");
}

// A sheet of 60 by 40 pixels with a margin of 10, and a picture of red, green, blue and black quarters.
TEST(PdfPictures, FillTheirBoxAndAreMirrored) {
    platform_linux::pdf::PdfPage page;
    page.widthPoints = 60;
    page.heightPoints = 40;
    page.device = {40, 20, 72, 72, 60, 40, 10, 10};
    const Color red{255, 0, 0};
    const Color green{0, 255, 0};
    const Color blue{0, 0, 255};
    auto picture = std::make_shared<Picture>(pictures::makePicture(2, 2, 2));
    picture->palette = {red, green, blue, black};
    picture->pixels = {0b0001'0000, 0b1011'0000};
    struct Case {
        int x, y, width, height;
        Color topLeft, topRight, bottomLeft, bottomRight;
    };
    for (const Case& box :
         {Case{10, 4, 8, 6, red, green, blue, black}, Case{18, 4, -8, 6, green, red, black, blue},
          Case{10, 10, 8, -6, blue, black, red, green}, Case{18, 10, -8, -6, black, blue, green, red}}) {
        const TemporaryFile file;
        Document document(pdf_support::settings(), file.descriptor());
        document.setPage(page);
        document.beginPage();
        document.surface().drawPicture(picture, box.x, box.y, box.width, box.height);
        document.surface().drawPicture(std::make_shared<Picture>(*picture), 50, 0, 5, 5);  // beyond the sheet
        document.surface().drawPicture(std::make_shared<Picture>(*picture), 5, 0, 0, 5);
        document.endPage();
        document.finish();
        EXPECT_EQ(run("grep -ac /Subtype/Image " + file.path()), "1\n");
        run("pdftoppm -r 720 -singlefile " + file.path() + ' ' + file.path());
        const Raster sheet = readRaster(file.path() + ".ppm");
        EXPECT_EQ(sheet.at(202, 142), box.topLeft);
        EXPECT_EQ(sheet.at(277, 142), box.topRight);
        EXPECT_EQ(sheet.at(202, 197), box.bottomLeft);
        EXPECT_EQ(sheet.at(277, 197), box.bottomRight);
        // Poppler's pictures are up to a pixel wider and higher than they should be.
        const auto ink =
            std::count_if(sheet.pixels.begin(), sheet.pixels.end(), [&](Color color) { return color != white; });
        EXPECT_TRUE(ink >= 80 * 60 && ink <= 81 * 61) << ink;
    }
}

std::string segment(char marker, const std::string& content) {
    const auto length = static_cast<char>(content.size() + 2);
    return std::string("\xFF") + marker + '\0' + length + content;
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

const std::string adobeMarker = segment('\xEE', std::string("Adobe\0\x64\0\0\0\0\2", 12));

TEST(PdfPictures, PassJpegFilesThroughWhereViewersKnowTheirKind) {
    const std::string jfif = segment('\xE0', std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
    struct Case {
        std::string file;
        std::string entries;  // none: the pixels are stored
    };
    const std::vector<Case> cases = {
        {jpeg("1"), "/ColorSpace/DeviceGray/Filter"},
        {jpeg("123"), "/ColorSpace/DeviceRGB/Filter"},
        {jpeg("123", '\xC2'), "/ColorSpace/DeviceRGB/Filter"},
        {jpeg("RGB", '\xC0', adobeMarker), "/ColorSpace/DeviceRGB/Filter"},
        {jpeg("RGB", '\xC0', jfif), "/ColorSpace/DeviceRGB/Filter"},
        {jpeg("1234"), "/ColorSpace/DeviceCMYK/Filter"},
        {jpeg("1234", '\xC0', adobeMarker), "/ColorSpace/DeviceCMYK/Decode[1 0 1 0 1 0 1 0]/Filter"},
        {jpeg("RGB"), ""},
        {jpeg("12"), ""},
        {jpeg("123", '\xC3'), ""},              // lossless
        {jpeg("123", '\xC9'), ""},              // arithmetic
        {jpeg("123", '\xC0', "", '\x0C'), ""},  // 12 bits
        {"GIF89a", ""},
    };
    for (const Case& item : cases) {
        const bool grey = item.file == jpeg("1");
        auto picture = std::make_shared<Picture>(pictures::makePicture(3, 2, grey ? 8 : 24));
        picture->jpeg = item.file;
        auto other = std::make_shared<Picture>(pictures::makePicture(4, 2, grey ? 8 : 24));  // the file is not its own
        other->jpeg = item.file;
        const TemporaryFile file;
        Document document(pdf_support::settings(), file.descriptor());
        document.setPage(pdf_support::a4Page());
        drawAll(document, {picture, other});
        document.finish();
        const std::string pdf = contentOf(file.path());
        const bool passed = !item.entries.empty();
        EXPECT_EQ(pdf.find("/DCTDecode") != std::string::npos, passed) << item.entries;
        EXPECT_EQ(pdf.find(">>stream\n" + item.file + "\nendstream") != std::string::npos, passed);
        EXPECT_TRUE(!passed || pdf.find(item.entries + "/DCTDecode/Length") != std::string::npos) << item.entries;
        EXPECT_NE(pdf.find("/FlateDecode", pdf.find("/Width 4/")), std::string::npos);
    }
}

TEST(PdfPictures, JpegHeadersCutOffAnywhereAreNone) {
    const std::string whole = jpeg("123", '\xC0', adobeMarker);
    for (std::size_t length = 0; length < whole.find("coded"); ++length) {
        EXPECT_FALSE(platform_linux::pdf::readJpegHeader(whole.substr(0, length))) << length;
    }
}

}  // namespace
