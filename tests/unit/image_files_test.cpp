// The port ImageFiles; the same tests for every system.
#include "support/image_files_test.h"

#include <tuple>

#include "pictures/foreign_picture.h"
#include "pictures/inversion.h"
#include "runtime/error.h"

namespace {

using namespace support;

// All that inverting has to keep.
auto keptOf(const std::string& content) {
    const pictures::ForeignPicture file = pictures::inspectForeignPicture(content);
    return std::tuple(file.kind, file.width, file.height, file.stored.bitsPerPixel, file.palette, file.transparency,
                      file.bitsPerSample, file.samples, file.orientation, file.furtherPictures, file.transparentColor);
}

TEST(ImageFiles, DecodeWhatOtherProgramsWrite) {
    const auto files = makeImageFiles();
    for (const PictureFile& row : pictureFiles) {
        if (!canDecode(row.name)) {
            continue;
        }
        SCOPED_TRACE(row.name);
        const std::string original = pictureFile(row.name);
        const platform::Picture picture = files->decode(original);
        const platform::PictureInfo info = files->inspect(original);
        EXPECT_EQ(picture.bitsPerPixel, row.bitsPerPixel);
        EXPECT_EQ(std::tuple(info.width, info.height, info.bitsPerPixel),
                  std::tuple(picture.width, picture.height, picture.bitsPerPixel));
        EXPECT_EQ(picture.palette.size(), row.bitsPerPixel == 24 ? 0 : std::size_t{1} << row.bitsPerPixel);
        EXPECT_NEAR(picture.dpiX, row.dpiX, 0.02);
        EXPECT_NEAR(info.dpiY, row.dpiY, 0.02);
        EXPECT_EQ(picture.jpeg, row.name.ends_with(".jpg") && row.name != "inks.jpg" ? original : "");
        EXPECT_LE(differenceOf(colorsOf(picture), colorsOfPpm(pictureFile(row.name + ".ppm"))), row.difference);
    }
}

TEST(ImageFiles, AreInvertedWithAllThatIsInThemOrRefused) {
    const auto files = makeImageFiles();
    for (const PictureFile& row : pictureFiles) {
        if (!canDecode(row.name)) {
            continue;
        }
        SCOPED_TRACE(row.name);
        const std::string original = pictureFile(row.name);
        std::string content;
        std::string detail;
        const int error = errorOf([&] { content = files->inverted(original); }, &detail);
        if (error != 0) {
            EXPECT_NE(detail.find("wurde nicht geändert"), std::string::npos) << detail;
        }
        EXPECT_EQ(error, canInvert(row.name) ? 0 : runtime::errInvalidPicture) << detail;
        if (error != 0) {
            continue;
        }
        const platform::Picture picture = files->decode(content);
        const int loss = canKeepAll() ? row.loss : row.loss * 5;
        EXPECT_LE(differenceOf(colorsOf(picture), colorsOfPpm(pictureFile(row.name + ".not.ppm"))),
                  row.difference + loss);
        EXPECT_LE(differenceOf(colorsOf(files->decode(files->inverted(content))), colorsOf(files->decode(original))),
                  2 * loss);
        EXPECT_EQ(keptOf(content), keptOf(original));
        EXPECT_NEAR(picture.dpiX, row.dpiX, 0.02);
        EXPECT_NEAR(picture.dpiY, row.dpiY, 0.02);
        if (canKeepAll()) {
            EXPECT_EQ(pictures::inspectForeignPicture(content).compression,
                      pictures::inspectForeignPicture(original).compression);
        }
    }
}

TEST(ImageFiles, InvertedSayAboutThemselvesWhatTheySaid) {
    using namespace std::string_literals;
    const auto files = makeImageFiles();
    std::string jpeg = pictureFile("full.jpg");
    const std::size_t lengthOfJfif = 18;
    const std::string jfif = jpeg.substr(2, lengthOfJfif);
    const std::string notes = "\xFF\xFE\0\6Haus\xFF\xE1\0\6Exif"s;
    jpeg.insert(2 + lengthOfJfif, notes);
    EXPECT_EQ(files->inverted(jpeg).substr(2, lengthOfJfif + notes.size()), jfif + notes) << "100 dots per centimetre";
    jpeg.erase(2, lengthOfJfif);
    EXPECT_EQ(files->decode(files->inverted(jpeg)).dpiX, 0);

    const std::string tiff = pictures::withoutTiffResolution(pictureFile("strips.tif"));
    EXPECT_EQ(files->inspect(tiff).dpiX, 0);
    EXPECT_EQ(files->decode(files->inverted(tiff)).dpiX, 0);
}

TEST(ImageFiles, RefuseFilesThatAreCutOffAtEveryLength) {
    const auto files = makeImageFiles();
    for (const std::string_view name : {"palette4.png", "interlaced-alpha.png", "progressive.jpg", "animated.gif",
                                        "group4.tif", "palette1.tif", "jpeg.tif", "tiles.tif"}) {
        const std::string content = pictureFile(name);
        for (std::size_t length = 0; length < content.size(); ++length) {
            const std::string_view part = std::string_view(content).substr(0, length);
            ASSERT_EQ(errorOf([&] { files->inspect(part); }), runtime::errInvalidPicture) << name << ' ' << length;
            ASSERT_EQ(errorOf([&] { files->decode(part); }), runtime::errInvalidPicture) << name << ' ' << length;
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
