// The port ImageFiles on Linux, beside what image_files_test.cpp asks of every system.
#include "linux_support.h"
#include "platform/linux/images/image_codecs.h"
#include "platform/linux/linux_image_files.h"
#include "support/image_files_test.h"

namespace support {

std::unique_ptr<platform::ImageFiles> makeImageFiles() { return std::make_unique<platform_linux::LinuxImageFiles>(); }
bool canDecode(std::string_view) { return true; }
bool canInvert(std::string_view name) { return !name.starts_with("inks"); }
bool canKeepAll() { return true; }

}  // namespace support

namespace {

using namespace linux_support;
using namespace support;

TEST(LinuxImageFiles, FindsWhatIsDamaged) {
    platform_linux::images::ImageCodecs files;
    for (const std::string_view name : {"rgb8.png", "interlaced.png", "colors200.gif", "lzw.tif", "grey8.tif"}) {
        std::string content = pictureFile(name);
        content.replace(content.size() / 2, 300, 300, '\0');
        std::string detail;
        EXPECT_EQ(errorOf([&] { files.decode(content); }, &detail), runtime::errInvalidPicture) << name;
        EXPECT_NE(detail.find("ist beschädigt"), std::string::npos) << detail;
    }
}

}  // namespace
