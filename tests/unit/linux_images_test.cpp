// The port ImageFiles on Linux, beside what image_files_test.cpp asks of every system.
#include "linux_support.h"
#include "platform/linux/images/image_codecs.h"
#include "platform/linux/linux_image_files.h"
#include "support/image_files_test.h"
#include "support/picture_table.h"

namespace support {

std::unique_ptr<platform::ImageFiles> makeImageFiles() { return std::make_unique<platform_linux::LinuxImageFiles>(); }
bool canDecode(std::string_view) { return true; }
bool canKeepAll() { return true; }

}  // namespace support

namespace {

using namespace linux_support;
using namespace support;

TEST(LinuxImageFiles, OtherProgramsReadWhatItWrites) {
    const TemporaryFolder folder;
    platform_linux::LinuxImageFiles files;
    std::string command = "convert";
    for (const PictureFile& row : pictureFiles) {
        const std::string original = pictureFile(row.name);
        put(folder / row.name, files.encode(files.decode(original), original));
        command += " " + folder / row.name;
    }
    ASSERT_EQ(std::system((command + " -depth 8 -type TrueColor +adjoin " + folder / "pixels-%d.ppm").c_str()), 0);
    int number = 0;
    for (const PictureFile& row : pictureFiles) {
        const std::string pixels = get(folder / "pixels-" + std::to_string(number++) + ".ppm");
        EXPECT_LE(differenceOf(colorsOf(files.decode(pictureFile(row.name))), colorsOfPpm(pixels)), row.loss)
            << row.name;
    }
}

TEST(LinuxImageFiles, FindsWhatIsDamaged) {
    platform_linux::images::ImageCodecs files;
    for (const std::string_view name : {"rgb8.png", "interlaced.png", "colors200.gif", "lzw.tif", "grey8.tif"}) {
        std::string content = pictureFile(name);
        content.replace(content.size() / 2, 300, 300, '\0');
        std::string message;
        EXPECT_EQ(errorOf([&] { files.decode(content); }, &message), runtime::errInvalidPicture) << name;
        EXPECT_NE(message.find("ist beschädigt"), std::string::npos) << message;
    }
}

}  // namespace
