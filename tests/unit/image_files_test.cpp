// The port ImageFiles; the same tests for every system.
#include "support/image_files_test.h"

#include <tuple>

#include "pictures/foreign_picture.h"
#include "runtime/error.h"

namespace {

using namespace support;

TEST(ImageFiles, DecodeWhatOtherProgramsWriteAndKeepKindDepthResolutionAndCompression) {
    const auto files = makeImageFiles();
    for (const PictureFile& row : pictureFiles) {
        if (!canDecode(row.name)) {
            continue;
        }
        SCOPED_TRACE(row.name);
        const std::string original = pictureFile(row.name);
        platform::Picture picture = files->decode(original);
        EXPECT_EQ(picture.bitsPerPixel, row.bitsPerPixel);
        EXPECT_EQ(picture.palette.size(), row.bitsPerPixel == 24 ? 0 : std::size_t{1} << row.bitsPerPixel);
        EXPECT_NEAR(picture.dpiX, row.dpiX, 0.02);
        EXPECT_NEAR(picture.dpiY, row.dpiY, 0.02);
        EXPECT_EQ(picture.jpeg, row.name.ends_with(".jpg") && row.name != "inks.jpg" ? original : "");
        EXPECT_LE(differenceOf(colorsOf(picture), colorsOfPpm(pictureFile(row.name + ".ppm"))), row.difference);

        for (std::uint8_t& byte : picture.pixels) {
            byte = static_cast<std::uint8_t>(~byte);
        }
        const std::string content = files->encode(picture, original);
        const platform::Picture again = files->decode(content);
        EXPECT_EQ(content.substr(0, 3), original.substr(0, 3));
        EXPECT_NEAR(again.dpiX, row.dpiX, 0.5);
        EXPECT_NEAR(again.dpiY, row.dpiY, 0.5);
        EXPECT_LE(differenceOf(colorsOf(again), colorsOf(picture)), canKeepAll() ? row.loss : row.loss * 5);
        if (canKeepAll()) {
            EXPECT_EQ(again.bitsPerPixel, row.bitsPerPixel);
            EXPECT_EQ(pictures::inspectForeignPicture(content).compression,
                      pictures::inspectForeignPicture(original).compression);
        }
    }
}

TEST(ImageFiles, RefuseFilesThatAreCutOffAtEveryLength) {
    const auto files = makeImageFiles();
    for (const std::string_view name : {"palette4.png", "interlaced-alpha.png", "progressive.jpg", "animated.gif",
                                        "group4.tif", "palette1.tif", "jpeg.tif", "tiles.tif"}) {
        const std::string content = pictureFile(name);
        for (std::size_t length = 0; length < content.size(); ++length) {
            ASSERT_EQ(errorOf([&] { files->decode(std::string_view(content).substr(0, length)); }),
                      runtime::errInvalidPicture)
                << name << ' ' << length;
        }
    }
}

TEST(ImageFiles, RefuseHeadersThatLie) {
    using namespace std::string_literals;
    for (const auto& [name, position, bytes, reason] :
         std::initializer_list<std::tuple<const char*, std::size_t, std::string, const char*>>{
             {"rgb8.png", 16, "\0\0\x75\x30\0\0\x75\x30"s, "30000 x 30000"},
             {"rgb8.png", 16, "\x80\0\0\0\0\0\0\1"s, "2147483648 x 1"},
             {"rgb8.png", 33, "\xFF\xFF\xFF\xFF"s, "abgeschnitten"},
             {"rgb8.png", 12, "IDAT"s, "beschädigt"},
             {"colors4.gif", 38, "\x30\x75\x30\x75"s, "30000 x 30000"},
             {"colors4.gif", 10, "\0"s, ""},
             {"group4.tif", 4, "\xFF\xFF\xFF\xFF"s, "abgeschnitten"},
             {"grey8.png", 0, "BM"s, "kein Bild einer bekannten Art"},
         }) {
        const std::string content = pictureFile(name).replace(position, bytes.size(), bytes);
        std::string detail;
        EXPECT_EQ(errorOf([&] { makeImageFiles()->decode(content); }, &detail), runtime::errInvalidPicture);
        EXPECT_NE(detail.find(reason), std::string::npos) << name << ' ' << position << ": " << detail;
    }
}

}  // namespace
